#include "formats/change_note.h"

#include "core/names.h"
#include "formats/marked_json.h"
#include "formats/record_json.h"

#include <algorithm>
#include <bit>
#include <map>

namespace kestrova
{

namespace
{

NoteJson JsonOf(const std::vector<ComingFile>& files)
{
    NoteJson list = NoteJson::array();
    for (const ComingFile& file : files)
        list.push_back({{"name", Encoded(file.name)},
                        {"hash", Encoded(file.hash)},
                        {"from", Encoded(file.source)}});
    return list;
}

NoteJson JsonOf(const std::vector<ChangedFolder>& folders)
{
    NoteJson list = NoteJson::array();
    for (const ChangedFolder& folder : folders) {
        NoteJson entry = {{"folder", Encoded(folder.folder)},
                          {"made", folder.made},
                          {"before", JsonOf(folder.before)},
                          {"after", JsonOf(folder.after)}};
        if (folder.goes)
            entry["goes"] = true;
        list.push_back(std::move(entry));
    }
    return list;
}

NoteJson JsonOf(const std::optional<LevelRecord>& level)
{
    if (!level)
        return nullptr;
    return {{"code", level->levelCode},
            {"name", Encoded(level->levelName)},
            {"note", Encoded(level->levelNote)},
            {"author", Encoded(level->authorName)},
            {"emails", Encoded(level->authorEmails)},
            {"sites", Encoded(level->authorSites)},
            {"authorNote", Encoded(level->authorNote)},
            {"cd", level->cdNumber},
            {"moreInfo", Encoded(level->moreInfoFile)},
            {"filesSize", level->filesSize},
            {"extrasSize", level->extrasSize},
            {"extrasDirty", level->extrasDirty}};
}

/// A name of one file, in whatever letters.
bool NamesOneFile(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos;
}

bool ReadBefore(NoteReader& reader, std::vector<StateFile>& files)
{
    bool sound = true;
    reader.List("before", [&](NoteReader& entry, const NoteJson&) {
        StateFile file{entry.Text("name"), entry.Text("hash")};
        sound = sound && NamesOneFile(file.name) && IsContentHash(file.hash);
        files.push_back(std::move(file));
    });
    return sound;
}

bool ReadComing(NoteReader& reader, std::vector<ComingFile>& files)
{
    bool sound = true;
    reader.List("after", [&](NoteReader& entry, const NoteJson&) {
        ComingFile file{entry.Text("name"), entry.Text("hash"), entry.Text("from")};
        // The first two become names of files: what could name another place spoils the whole note.
        sound = sound && NamesOneFile(file.name) && IsContentHash(file.hash) &&
                Path{file.source}.is_absolute();
        files.push_back(std::move(file));
    });
    return sound;
}

bool ReadFolders(NoteReader& reader, std::vector<ChangedFolder>& folders)
{
    bool sound = true;
    reader.List("folders", [&](NoteReader& entry, const NoteJson&) {
        ChangedFolder folder;
        folder.folder = entry.Text("folder");
        folder.made = entry.Flag("made");
        folder.goes = entry.Has("goes") && entry.Flag("goes");
        sound = ReadBefore(entry, folder.before) && sound;
        sound = ReadComing(entry, folder.after) && sound;
        sound = sound && Path{folder.folder}.is_absolute();
        folders.push_back(std::move(folder));
    });
    return sound;
}

/// Null stands for no record.
std::optional<LevelRecord> ReadLevel(const NoteJson& json, bool& sound)
{
    if (json.is_null())
        return {};
    NoteReader reader{json};
    LevelRecord level;
    level.levelCode = reader.Number<LevelCode>("code");
    level.levelName = reader.Text("name");
    level.levelNote = reader.Text("note");
    level.authorName = reader.Text("author");
    level.authorEmails = reader.Text("emails");
    level.authorSites = reader.Text("sites");
    level.authorNote = reader.Text("authorNote");
    level.cdNumber = reader.Number<std::int32_t>("cd");
    level.moreInfoFile = reader.Text("moreInfo");
    level.filesSize = reader.Number<std::int32_t>("filesSize");
    level.extrasSize = reader.Number<std::int32_t>("extrasSize");
    level.extrasDirty = reader.Flag("extrasDirty");
    sound = sound && reader.Good();
    return level;
}

bool ReadRecord(const NoteJson& json, Change& change)
{
    const auto found = json.find("record");
    if (found == json.end())
        return true;
    NoteReader reader{*found};
    ChangedRecord record;
    record.place = reader.Number<std::size_t>("place");
    bool sound = reader.Has("before") && reader.Has("after") && reader.Good();
    if (!sound)
        return false;
    record.before = ReadLevel((*found)["before"], sound);
    record.after = ReadLevel((*found)["after"], sound);
    const auto isOther = [&](const std::optional<LevelRecord>& level) {
        return level && level->levelCode != change.code;
    };
    sound = sound && (record.before || record.after) && !isOther(record.before) &&
            !isOther(record.after) && !change.archive.empty();
    change.record = std::move(record);
    return sound;
}

bool ReadMarksOfChange(const NoteJson& json, Change& change)
{
    const auto found = json.find("marks");
    return found == json.end() || (ReadMarkedLevels(*found, change.marks) &&
                                   !change.marks.empty() && change.folders.empty());
}

/// A total by its bits, whatever an archive says.
std::uint64_t BitsOf(double total)
{
    return std::bit_cast<std::uint64_t>(total);
}

bool ReadSizes(NoteReader& reader, SizesBefore& sizes)
{
    sizes.files = std::bit_cast<double>(reader.Number<std::uint64_t>("filesTotal"));
    sizes.extras = std::bit_cast<double>(reader.Number<std::uint64_t>("extrasTotal"));
    sizes.extrasOfLevel = reader.Number<std::int32_t>("extrasBefore");
    return reader.Good();
}

/// True when the change touches nothing but the level's folder and its live savegames.
bool StaysWithItsLevel(const Change& change)
{
    return (change.header.empty() || IsInHome(change, change.header)) &&
           (change.live.empty() || Path{change.live}.is_absolute()) &&
           std::all_of(
               change.folders.begin(), change.folders.end(), [&](const ChangedFolder& folder) {
                   return IsInHome(change, folder.folder) ||
                          (!change.live.empty() && Path{folder.folder} == Path{change.live});
               });
}

} // namespace

std::string FormatChange(const Change& change)
{
    NoteJson json = {{"reason", Encoded(change.reason)},
                     {"header", Encoded(change.header)},
                     {"live", Encoded(change.live)},
                     {"archived", change.archivedCount},
                     {"archivedBefore", change.archivedBefore},
                     {"extraBytes", change.extraBytes},
                     {"filesTotal", BitsOf(change.sizes.files)},
                     {"extrasTotal", BitsOf(change.sizes.extras)},
                     {"extrasBefore", change.sizes.extrasOfLevel},
                     {"folders", JsonOf(change.folders)}};
    if (change.record)
        json["record"] = {{"place", change.record->place},
                          {"before", JsonOf(change.record->before)},
                          {"after", JsonOf(change.record->after)}};
    if (!change.marks.empty())
        json["marks"] = JsonOf(change.marks);
    return FormatChangeHead(change) + Written(json);
}

Result<Change> ParseChange(std::string_view text)
{
    const auto damaged = [] { return Failure{ErrorCode::Damaged, {}, {}}; };
    const std::size_t end = text.find('\n');
    auto head = ParseChangeHead(text.substr(0, end));
    if (!head || end == std::string_view::npos)
        return damaged();
    Change change;
    static_cast<ChangeHead&>(change) = std::move(head).Value();
    const NoteJson json = ParseNote(text.substr(end + 1));
    NoteReader reader{json};
    change.reason = reader.Text("reason");
    change.header = reader.Text("header");
    change.live = reader.Text("live");
    change.archivedCount = reader.Number<std::int32_t>("archived");
    change.archivedBefore = reader.Number<std::int32_t>("archivedBefore");
    change.extraBytes = reader.Number<std::int32_t>("extraBytes");
    const bool sound =
        ReadSizes(reader, change.sizes) && ReadFolders(reader, change.folders) && reader.Good();
    if (!sound || !ReadRecord(json, change) || !ReadMarksOfChange(json, change) ||
        (change.kind != ChangeKind::Unnamed && !StaysWithItsLevel(change)))
        return damaged();
    return change;
}

namespace
{

/// Where each content lies that a change gave a name.
std::map<std::string, std::string> PlacesAfter(const Change& change)
{
    std::map<std::string, std::string> places;
    for (const ChangedFolder& folder : change.folders)
        for (const ComingFile& file : folder.after)
            places.emplace(file.hash, (Path{folder.folder} / file.name).native());
    return places;
}

/// Where a content that went lies when the change is made: among what was kept.
std::string SourceKept(const Change& change, const ChangedFolder& folder, const StateFile& was)
{
    return change.kept.empty() ? (Path{folder.folder} / was.name).native()
                               : (Path{change.kept} / was.hash).native();
}

} // namespace

Change Inverse(const Change& change)
{
    Change back = change;
    back.id = 0;
    back.kept.clear();
    back.undoes = change.id;
    back.isUndone = !change.isUndone;
    std::swap(back.archivedCount, back.archivedBefore);
    back.extraBytes = -change.extraBytes;
    const auto places = PlacesAfter(change);
    for (ChangedFolder& folder : back.folders) {
        const std::vector<StateFile> before = std::move(folder.before);
        folder.before.clear();
        for (const ComingFile& file : folder.after)
            folder.before.push_back({file.name, file.hash});
        folder.after.clear();
        for (const StateFile& file : before) {
            const auto place = places.find(file.hash);
            folder.after.push_back(
                {file.name, file.hash,
                 place != places.end() ? place->second : SourceKept(change, folder, file)});
        }
        std::swap(folder.made, folder.goes);
    }
    if (back.record)
        std::swap(back.record->before, back.record->after);
    if (back.moved)
        std::swap(back.moved->from, back.moved->to);
    for (MarkedLevel& level : back.marks)
        std::swap(level.before, level.after);
    return back;
}

} // namespace kestrova
