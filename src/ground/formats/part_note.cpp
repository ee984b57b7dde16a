#include "formats/part_note.h"

#include "formats/record_json.h"

namespace kestrova
{

std::optional<PartNote> ParsePartNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    PartNote note;
    note.url = reader.Text("url");
    note.validator = reader.Text("validator");
    note.size = reader.Number<std::uint64_t>("size");
    if (!reader.Good() || note.validator.empty() || OnOneLine(note.validator) != note.validator)
        return std::nullopt;
    return note;
}

std::string FormatPartNote(const PartNote& note)
{
    return Written(
        {{"url", Encoded(note.url)}, {"validator", Encoded(note.validator)}, {"size", note.size}});
}

} // namespace kestrova
