// The frames of MPEG audio, in files of anybody's making.

#include "audio/mpeg_frames.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const MpegFacts facts = ScanMpeg(bytes);
    Promise(facts.audioBytes <= size, "frames do not overlap");
    Promise(facts.frames <= size / 4, "a frame has a header at least");
    Promise(facts.samples <= facts.frames * 1152, "a frame has 1,152 samples at the most");
    if (facts.frames > 0)
        Promise(facts.first.rate >= 8000 && facts.first.rate <= 48000, "a rate of the tables");
    Promise(SkipMpegTags(bytes) <= size, "tags end in the file");
    (void)DurationOfMpeg(bytes);
    return 0;
}
