#include "formats/checked_note.h"

#include "formats/record_json.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::int32_t checkedVersion = 1;

bool IsCode(const NoteJson& json)
{
    return json.is_number_unsigned() &&
           json.get<std::uint64_t>() <=
               static_cast<std::uint64_t>(std::numeric_limits<LevelCode>::max());
}

} // namespace

std::string FormatCheckedNote(const CheckedNote& note)
{
    return WrittenLine(
        {{"version", checkedVersion}, {"archive", Encoded(note.archive)}, {"harmed", note.harmed}});
}

Result<CheckedNote> ParseCheckedNote(std::string_view text)
{
    const Failure damaged{ErrorCode::Damaged, {}, {}};
    if (text.size() > longestCheckedNote)
        return damaged;
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    CheckedNote note;
    const auto version = reader.Number<std::int32_t>("version");
    note.archive = reader.Text("archive");
    if (!reader.Good() || version != checkedVersion || !json.contains("harmed"))
        return damaged;
    const NoteJson& harmed = json["harmed"];
    if (!harmed.is_array() || !std::all_of(harmed.begin(), harmed.end(), IsCode))
        return damaged;
    for (const NoteJson& code : harmed)
        note.harmed.push_back(code.get<LevelCode>());
    return note;
}

} // namespace kestrova
