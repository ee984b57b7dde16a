#include "formats/start_note.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of a first start: whatever parses is written and read the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (const auto note = ParseStartNote(TextOfInput(data, size))) {
        const auto again = ParseStartNote(FormatStartNote(*note));
        Promise(again && *again == *note, "what was written reads the same");
        Promise(note->trle.find('\0') == std::string::npos, "a folder's name has no end in it");
    }
    return 0;
}
