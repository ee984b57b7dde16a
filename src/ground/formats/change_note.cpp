#include "formats/change_note.h"

#include "core/names.h"
#include "formats/record_json.h"

#include <algorithm>
#include <iterator>

namespace kestrova
{

namespace
{

/// Behind each kind its word, in the order of the kinds.
constexpr std::string_view kindWords[] = {
    "",           "slots-freed", "slots-filled",  "import",       "export",       "bring-back",
    "shot-added", "shot-taken",  "shot-replaced", "shot-deleted", "shot-renamed", "shots-imported",
    "edit",       "removal",     "language",      "language-back"};

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

bool ReadComing(NoteReader& reader, std::vector<ComingFile>& files)
{
    bool sound = true;
    reader.List("after", [&](NoteReader& entry, const NoteJson&) {
        ComingFile file{entry.Text("name"), entry.Text("hash"), entry.Text("from")};
        // The first two become names of files: what could name another place spoils the whole note.
        sound = sound && SafeName(file.name) && IsContentHash(file.hash) &&
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
        sound = Read(entry, "before", folder.before) && sound;
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
    record.archive = reader.Text("archive");
    record.place = reader.Number<std::size_t>("place");
    bool sound = reader.Has("before") && reader.Has("after") && reader.Good() &&
                 Path{record.archive}.is_absolute();
    if (!sound)
        return false;
    record.before = ReadLevel((*found)["before"], sound);
    record.after = ReadLevel((*found)["after"], sound);
    change.record = std::move(record);
    return sound;
}

bool ReadMoved(const NoteJson& json, Change& change)
{
    const auto found = json.find("moved");
    if (found == json.end())
        return true;
    NoteReader reader{*found};
    change.moved =
        MovedFolder{reader.Text("from"), reader.Text("to"), reader.Number<std::uint64_t>("bytes")};
    return reader.Good() && Path{change.moved->from}.is_absolute() &&
           Path{change.moved->to}.is_absolute();
}

/// True for a place that is not told, or whole.
bool IsPlace(const std::string& path)
{
    return path.empty() || Path{path}.is_absolute();
}

/// What notes of earlier versions lack.
bool ReadEntry(const NoteJson& json, NoteReader& reader, Change& change)
{
    if (!reader.Has("kind"))
        return Path{change.header}.is_absolute();
    const std::string word = reader.Text("kind");
    const auto* const kind = std::find(std::begin(kindWords) + 1, std::end(kindWords), word);
    change.kind = static_cast<ChangeKind>(kind - std::begin(kindWords));
    change.id = reader.Number<std::int32_t>("id");
    change.madeNs = reader.Number<std::int64_t>("time");
    change.subject = reader.Text("subject");
    change.levelName = reader.Text("level");
    change.home = reader.Text("home");
    change.live = reader.Text("live");
    change.kept = reader.Text("kept");
    change.archivedBefore = reader.Number<std::int32_t>("archivedBefore");
    change.extraBytes = reader.Number<std::int32_t>("extraBytes");
    change.ofLevelsFiles = reader.Flag("ofLevelsFiles");
    change.undoes = reader.Number<std::int32_t>("undoes");
    change.isUndone = reader.Flag("isUndone");
    return reader.Good() && kind != std::end(kindWords) && IsPlace(change.header) &&
           IsPlace(change.home) && IsPlace(change.live) && IsPlace(change.kept) &&
           ReadRecord(json, change) && ReadMoved(json, change);
}

} // namespace

std::string FormatChange(const Change& change)
{
    NoteJson json = {{"code", change.code},
                     {"reason", Encoded(change.reason)},
                     {"header", Encoded(change.header)},
                     {"archived", change.archivedCount},
                     {"folders", JsonOf(change.folders)}};
    if (change.kind == ChangeKind::Unnamed)
        return Written(json);
    json["kind"] = kindWords[static_cast<std::size_t>(change.kind)];
    json["id"] = change.id;
    json["time"] = change.madeNs;
    json["subject"] = Encoded(change.subject);
    json["level"] = Encoded(change.levelName);
    json["home"] = Encoded(change.home);
    json["live"] = Encoded(change.live);
    json["kept"] = Encoded(change.kept);
    json["archivedBefore"] = change.archivedBefore;
    json["extraBytes"] = change.extraBytes;
    json["ofLevelsFiles"] = change.ofLevelsFiles;
    json["undoes"] = change.undoes;
    json["isUndone"] = change.isUndone;
    if (change.record)
        json["record"] = {{"archive", Encoded(change.record->archive)},
                          {"place", change.record->place},
                          {"before", JsonOf(change.record->before)},
                          {"after", JsonOf(change.record->after)}};
    if (change.moved)
        json["moved"] = {{"from", Encoded(change.moved->from)},
                         {"to", Encoded(change.moved->to)},
                         {"bytes", change.moved->bytes}};
    return Written(json);
}

Result<Change> ParseChange(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    Change change;
    change.code = reader.Number<LevelCode>("code");
    change.reason = reader.Text("reason");
    change.header = reader.Text("header");
    change.archivedCount = reader.Number<std::int32_t>("archived");
    const bool sound = ReadFolders(reader, change.folders);
    if (!reader.Good() || !sound || !ReadEntry(json, reader, change))
        return Failure{ErrorCode::Damaged, {}, {}};
    return change;
}

namespace
{

/// Where a content lies when the change is made: under a name that the change gave it, or among
/// what was kept.
std::string SourceAfter(const Change& change, const ChangedFolder& home, const StateFile& was)
{
    for (const ChangedFolder& folder : change.folders)
        for (const ComingFile& file : folder.after)
            if (file.hash == was.hash)
                return (Path{folder.folder} / file.name).native();
    return change.kept.empty() ? (Path{home.folder} / was.name).native()
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
    for (ChangedFolder& folder : back.folders) {
        const std::vector<StateFile> before = std::move(folder.before);
        folder.before.clear();
        for (const ComingFile& file : folder.after)
            folder.before.push_back({file.name, file.hash});
        folder.after.clear();
        for (const StateFile& file : before)
            folder.after.push_back({file.name, file.hash, SourceAfter(change, folder, file)});
        std::swap(folder.made, folder.goes);
    }
    if (back.record)
        std::swap(back.record->before, back.record->after);
    if (back.moved)
        std::swap(back.moved->from, back.moved->to);
    return back;
}

} // namespace kestrova
