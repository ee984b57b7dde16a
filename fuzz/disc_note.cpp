#include "formats/disc_note.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of an archive's discs: whatever parses is written and read the same, and no file of it
/// lies outside of its level's folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto note = ParseDiscNote(bytes)) {
        const std::string written = FormatDiscNote(*note);
        const auto again = ParseDiscNote(written);
        Promise(again && *again == *note, "what was written reads the same");
        for (const NotedDisc& disc : note->discs)
            for (const NotedLevel& level : disc.levels)
                for (const NotedFile& file : level.files) {
                    const Path below = Path{file.name}.lexically_normal();
                    Promise(below.is_relative() && *below.begin() != "..",
                            "a file lies below its level's folder");
                }
        Promise(note->Find(0) == nullptr, "no disc has the number 0");
    }
    return 0;
}
