#include "formats/library_note.h"

#include "check.h"
#include "core/names.h"
#include "formats/played_note.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The notes on levels, and the note of the game that runs: whatever parses is written and read the
/// same, stays within its bounds, and names no file outside of a level's screen-shots.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto library = ParseLibrary(bytes)) {
        const auto again = ParseLibrary(FormatLibrary(*library));
        Promise(again && *again == *library, "what was written reads the same");
        for (const LibraryEntry& entry : library->levels) {
            LevelNote tidy = entry.note;
            MakeTidy(tidy);
            Promise(tidy == entry.note, "a note is within its bounds");
            Promise(entry.note.cover.empty() || SafeName(entry.note.cover),
                    "a cover is the name of a file");
        }
    }
    if (const auto note = ParsePlayedNote(bytes)) {
        const auto again = ParsePlayedNote(FormatPlayedNote(*note));
        Promise(again && *again == *note, "a note of games reads the same");
    }
    return 0;
}
