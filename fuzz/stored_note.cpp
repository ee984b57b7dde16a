#include "formats/stored_note.h"

#include "check.h"
#include "core/names.h"
#include "formats/checked_note.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of a level's stored files, and the one of the last checks: whatever parses is written
/// and read the same, and names no file outside of their folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (const auto note = ParseStoredNote(TextOfInput(data, size))) {
        const auto again = ParseStoredNote(FormatStoredNote(*note));
        Promise(again && *again == *note, "what was written reads the same");
        for (const StoredEntry& entry : note->files) {
            Promise(static_cast<bool>(SafeName(entry.name)), "a stored file is one of the folder");
            Promise(note->Find(entry.name) == &entry, "a name stands once");
        }
    }
    if (const auto note = ParseCheckedNote(TextOfInput(data, size))) {
        const auto again = ParseCheckedNote(FormatCheckedNote(*note));
        Promise(again && *again == *note, "what a check found reads the same");
    }
    return 0;
}
