#include "formats/archive_file.h"

#include "check.h"

#include <array>

using namespace kestrova;
using namespace kestrova::fuzz;

/// `*.kva`: what parses gives back its own bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    const auto content = ParseArchive(bytes);
    if (!content)
        return 0;
    const std::string written = FormatArchive(*content);
    Promise(written.size() <= size, "an archive is no longer than its file");
    Promise(written.size() == archiveHeaderSize + content->levels.size() * levelRecordSize,
            "the count rules the length");

    constexpr std::array<Loose, 1> headerFlags{{{524, 6}}};
    constexpr std::array<Loose, 1> levelFlags{{{1632, 2}}};
    const std::string_view view = written;
    Promise(SameBut(view.substr(0, archiveHeaderSize), bytes, headerFlags), "the header's bytes");
    for (std::size_t at = archiveHeaderSize; at < view.size(); at += levelRecordSize)
        Promise(SameBut(view.substr(at, levelRecordSize), bytes.substr(at), levelFlags),
                "a level's bytes");

    const auto again = ParseArchive(written);
    Promise(again && FormatArchive(*again) == written, "what was written reads the same");
    for (const std::size_t cut : {archiveHeaderSize - 1, written.size() - 1})
        Promise(!ParseArchive(view.substr(0, cut)), "a cut archive is refused");
    return 0;
}
