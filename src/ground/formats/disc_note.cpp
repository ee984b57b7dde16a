#include "formats/disc_note.h"

#include "formats/noted_files_json.h"

#include <set>

namespace kestrova
{

namespace
{

constexpr int discNoteVersion = 1;
constexpr std::int64_t highestDisc = INT32_MAX;

NoteJson JsonOf(const NotedLevel& level)
{
    return {{"code", level.code}, {"verified", level.verified}, {"files", JsonOf(level.files)}};
}

NoteJson JsonOf(const NotedDisc& disc)
{
    NoteJson levels = NoteJson::array();
    for (const NotedLevel& level : disc.levels)
        levels.push_back(JsonOf(level));
    return {{"number", disc.number},     {"label", Encoded(disc.label)},
            {"capacity", disc.capacity}, {"image", Encoded(disc.image)},
            {"made", disc.made},         {"levels", std::move(levels)}};
}

bool ReadLevels(NoteReader& reader, std::vector<NotedLevel>& levels)
{
    bool sound = true;
    std::set<LevelCode> codes;
    reader.List("levels", [&](NoteReader& entry, const NoteJson&) {
        NotedLevel level;
        level.code = entry.Number<LevelCode>("code");
        level.verified = entry.Flag("verified");
        sound = ReadNotedFiles(entry, level.files) && sound && codes.insert(level.code).second;
        levels.push_back(std::move(level));
    });
    return sound;
}

bool ReadDiscs(NoteReader& reader, DiscNote& note)
{
    bool sound = true;
    reader.List("discs", [&](NoteReader& entry, const NoteJson&) {
        NotedDisc disc;
        const auto number = entry.Number<std::int64_t>("number");
        disc.number = static_cast<std::int32_t>(number);
        disc.label = entry.Text("label");
        const auto capacity = entry.Number<std::int64_t>("capacity");
        disc.capacity = static_cast<std::uint64_t>(capacity);
        disc.image = entry.Text("image");
        disc.made = entry.Number<std::int64_t>("made");
        sound = ReadLevels(entry, disc.levels) && sound && number >= 1 && number <= highestDisc &&
                capacity >= 0 && (disc.image.empty() || Path{disc.image}.is_absolute()) &&
                disc.image.find('\0') == std::string::npos &&
                (note.discs.empty() || note.discs.back().number < disc.number);
        note.discs.push_back(std::move(disc));
    });
    return sound;
}

} // namespace

const NotedLevel* NotedDisc::Find(LevelCode code) const
{
    const auto found = std::find_if(levels.begin(), levels.end(),
                                    [&](const NotedLevel& level) { return level.code == code; });
    return found == levels.end() ? nullptr : &*found;
}

const NotedDisc* DiscNote::Find(std::int32_t number) const
{
    const auto found = std::lower_bound(
        discs.begin(), discs.end(), number,
        [](const NotedDisc& disc, std::int32_t wanted) { return disc.number < wanted; });
    return found == discs.end() || found->number != number ? nullptr : &*found;
}

void DiscNote::Put(NotedDisc disc)
{
    const auto place = std::lower_bound(
        discs.begin(), discs.end(), disc.number,
        [](const NotedDisc& other, std::int32_t number) { return other.number < number; });
    if (place != discs.end() && place->number == disc.number)
        *place = std::move(disc);
    else
        discs.insert(place, std::move(disc));
}

void DiscNote::CutAfter(std::int32_t number)
{
    std::erase_if(discs, [&](const NotedDisc& disc) { return disc.number > number; });
}

std::string FormatDiscNote(const DiscNote& note)
{
    NoteJson discs = NoteJson::array();
    for (const NotedDisc& disc : note.discs)
        discs.push_back(JsonOf(disc));
    return WrittenLine({{"version", discNoteVersion},
                        {"folder", Encoded(note.folder)},
                        {"discs", std::move(discs)}});
}

Result<DiscNote> ParseDiscNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    DiscNote note;
    const int version = reader.Number<int>("version");
    note.folder = reader.Text("folder");
    if (!ReadDiscs(reader, note) || !reader.Good() || version != discNoteVersion)
        return Failure{ErrorCode::Damaged, {}, {}};
    return note;
}

} // namespace kestrova
