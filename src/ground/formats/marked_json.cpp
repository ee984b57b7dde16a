#include "formats/marked_json.h"

#include "core/names.h"

namespace kestrova
{

namespace
{

NoteJson JsonOf(const SaidMarks& marks)
{
    NoteJson json = NoteJson::object();
    if (marks.status)
        json["status"] = WordOf(*marks.status);
    if (marks.stars)
        json["stars"] = *marks.stars;
    if (marks.tags) {
        json["tags"] = NoteJson::array();
        for (const std::string& tag : *marks.tags)
            json["tags"].push_back(Encoded(tag));
    }
    if (marks.ownNote)
        json["note"] = Encoded(*marks.ownNote);
    if (marks.cover)
        json["cover"] = Encoded(*marks.cover);
    return json;
}

/// False for a value beyond its bounds.
bool ReadMarks(const NoteJson& json, SaidMarks& marks)
{
    NoteReader reader{json};
    bool sound = true;
    if (reader.Has("status")) {
        marks.status = StatusFromWord(reader.Text("status"));
        sound = marks.status.has_value();
    }
    if (reader.Has("stars")) {
        marks.stars = reader.Number<int>("stars");
        sound = sound && *marks.stars >= 0 && *marks.stars <= mostStars;
    }
    if (reader.Has("tags")) {
        marks.tags.emplace();
        reader.Names("tags", *marks.tags);
        sound = sound && marks.tags->size() <= mostTags;
    }
    if (reader.Has("note")) {
        marks.ownNote = reader.Text("note");
        sound = sound && marks.ownNote->size() <= longestOwnNote;
    }
    if (reader.Has("cover")) {
        marks.cover = reader.Text("cover");
        sound = sound && (marks.cover->empty() || SafeName(*marks.cover));
    }
    return reader.Good() && sound;
}

} // namespace

NoteJson JsonOf(const std::vector<MarkedLevel>& levels)
{
    NoteJson list = NoteJson::array();
    for (const MarkedLevel& level : levels)
        list.push_back({{"code", level.code},
                        {"token", level.token},
                        {"before", JsonOf(level.before)},
                        {"after", JsonOf(level.after)}});
    return list;
}

bool ReadMarkedLevels(const NoteJson& list, std::vector<MarkedLevel>& levels)
{
    if (!list.is_array())
        return false;
    for (const NoteJson& one : list) {
        NoteReader reader{one};
        MarkedLevel level;
        level.code = reader.Number<LevelCode>("code");
        level.token = reader.Text("token");
        const bool whole = reader.Has("before") && reader.Has("after") && reader.Good() &&
                           IsContentHash(level.token);
        if (!whole || !ReadMarks(one["before"], level.before) ||
            !ReadMarks(one["after"], level.after))
            return false;
        levels.push_back(std::move(level));
    }
    return true;
}

} // namespace kestrova
