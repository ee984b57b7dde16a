#include "formats/move_note.h"

#include "core/names.h"

#include "check.h"

using namespace kestrova;
using namespace kestrova::fuzz;

/// The note of an archive's move: whatever parses names whole places and is written and read the
/// same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = TextOfInput(data, size);
    if (const auto note = ParseMoveNote(bytes)) {
        for (const std::string& place : {note->archive, note->from, note->to})
            Promise(Path{place}.is_absolute(), "a place is absolute");
        Promise(note->from != note->to, "a move has two folders");
        const auto again = ParseMoveNote(FormatMoveNote(*note));
        Promise(again && again->archive == note->archive && again->from == note->from &&
                    again->to == note->to && again->madeTo == note->madeTo,
                "what was written reads the same");
    }
    const MoveNote named{"/a.kva", "/" + std::string{bytes}, "/to/" + std::string{bytes}, true};
    const auto back = ParseMoveNote(FormatMoveNote(named));
    Promise(bool{back} == (bytes.find('\0') == std::string_view::npos), "a name is taken or not");
    Promise(!back || (back->from == named.from && back->to == named.to), "a name is kept exactly");
    return 0;
}
