#include "formats/move_note.h"

#include "core/names.h"
#include "formats/record_json.h"

namespace kestrova
{

std::string FormatMoveNote(const MoveNote& note)
{
    return Written({{"archive", Encoded(note.archive)},
                    {"from", Encoded(note.from)},
                    {"to", Encoded(note.to)},
                    {"madeTo", note.madeTo}});
}

Result<MoveNote> ParseMoveNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    MoveNote note{reader.Text("archive"), reader.Text("from"), reader.Text("to"),
                  reader.Flag("madeTo")};
    bool sound = reader.Good() && note.from != note.to;
    for (const std::string* path : {&note.archive, &note.from, &note.to})
        sound = sound && Path{*path}.is_absolute() && path->find('\0') == std::string::npos;
    return sound ? Result<MoveNote>{std::move(note)} : Failure{ErrorCode::Damaged, {}, {}};
}

} // namespace kestrova
