#include "formats/start_note.h"

#include "formats/record_json.h"

namespace kestrova
{

namespace
{

constexpr int startNoteVersion = 1;

} // namespace

std::string FormatStartNote(const StartNote& note)
{
    return WrittenLine({{"version", startNoteVersion},
                        {"trle", Encoded(note.trle)},
                        {"levels", Encoded(note.levels)},
                        {"compact", note.compact},
                        {"fileTypes", note.fileTypes},
                        {"practice", note.practice}});
}

Result<StartNote> ParseStartNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    const int version = reader.Number<int>("version");
    StartNote note;
    note.trle = reader.Text("trle");
    note.levels = reader.Text("levels");
    note.compact = reader.Flag("compact");
    note.fileTypes = reader.Flag("fileTypes");
    note.practice = reader.Flag("practice");
    const bool sound =
        note.trle.find('\0') == std::string::npos && note.levels.find('\0') == std::string::npos;
    if (!reader.Good() || version != startNoteVersion || !sound)
        return Failure{ErrorCode::Damaged, {}, {}};
    return note;
}

} // namespace kestrova
