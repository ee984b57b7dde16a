#include "formats/stored_note.h"

#include "check.h"
#include "core/names.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of a level's stored files: whatever parses is written and read the same, and names no
/// file outside of their folder.
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
    return 0;
}
