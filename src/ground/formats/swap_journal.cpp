#include "formats/swap_journal.h"

#include "formats/record_json.h"

namespace kestrova
{

namespace
{

using Json = NoteJson;

Json JsonOf(const FolderMark& mark)
{
    return {{"path", Encoded(mark.path)}, {"device", mark.device}, {"inode", mark.inode}};
}

void Read(NoteReader& reader, const char* name, FolderMark& mark)
{
    reader.List(name, [&](NoteReader& entry, const Json&) {
        mark.path = entry.Text("path");
        mark.device = entry.Number<std::uint64_t>("device");
        mark.inode = entry.Number<std::uint64_t>("inode");
    });
}

Json JsonOf(const std::vector<OwnedFile>& files)
{
    Json list = Json::array();
    for (const OwnedFile& file : files)
        list.push_back({{"name", Encoded(file.name)},
                        {"size", file.size},
                        {"time", file.modifiedNs},
                        {"changed", file.changedNs},
                        {"inode", file.inode}});
    return list;
}

void Read(NoteReader& reader, const char* name, std::vector<OwnedFile>& files)
{
    reader.List(name, [&](NoteReader& entry, const Json&) {
        OwnedFile file;
        file.name = entry.Text("name");
        file.size = entry.Number<std::uint64_t>("size");
        file.modifiedNs = entry.Number<std::int64_t>("time");
        if (entry.Has("changed"))
            file.changedNs = entry.Number<std::int64_t>("changed");
        if (entry.Has("inode"))
            file.inode = entry.Number<std::uint64_t>("inode");
        files.push_back(std::move(file));
    });
}

Json JsonOf(const std::vector<std::string>& names)
{
    Json list = Json::array();
    for (const std::string& name : names)
        list.push_back(Encoded(name));
    return list;
}

} // namespace

std::string FormatOwner(const OwnerRecord& record)
{
    return Written({{"folder", Json::array({JsonOf(record.folder)})},
                    {"marker", Encoded(record.marker)},
                    {"owner", record.owner ? Json(*record.owner) : Json(nullptr)},
                    {"home", Json::array({JsonOf(record.home)})},
                    {"level", Encoded(Readable(record.levelName))},
                    {"token", Encoded(record.token)},
                    {"added", JsonOf(record.added)},
                    {"overwritten", JsonOf(record.overwritten)},
                    {"owed", JsonOf(record.owed)},
                    {"strangers", JsonOf(record.strangers)},
                    {"waiting", JsonOf(record.waiting)},
                    {"boot", Encoded(record.bootId)}});
}

Result<OwnerRecord> ParseOwner(std::string_view text)
{
    const Json json = ParseNote(text);
    NoteReader reader{json};
    OwnerRecord record;
    Read(reader, "folder", record.folder);
    record.marker = reader.Text("marker");
    if (reader.Good() && !reader.IsNull("owner"))
        record.owner = reader.Number<LevelCode>("owner");
    Read(reader, "added", record.added);
    reader.Names("overwritten", record.overwritten);
    record.bootId = reader.Text("boot");
    if (reader.Has("owed"))
        reader.Names("owed", record.owed);
    bool sound = true;
    if (reader.Has("home")) {
        Read(reader, "home", record.home);
        record.levelName = reader.Text("level");
        if (reader.Has("token"))
            record.token = reader.Text("token");
        Read(reader, "strangers", record.strangers);
        reader.Names("waiting", record.waiting);
        sound = std::all_of(record.waiting.begin(), record.waiting.end(),
                            [](const std::string& name) { return bool{SafeName(name)}; });
    }
    if (!reader.Good() || !sound)
        return Failure{ErrorCode::Damaged, {}, {}};
    return record;
}

std::string FormatJournal(const SwapJournal& journal)
{
    return Written({{"folder", Json::array({JsonOf(journal.folder)})},
                    {"phase", static_cast<int>(journal.phase)},
                    {"from", journal.from},
                    {"from-store", Encoded(journal.fromStore)},
                    {"to-store", Encoded(journal.toStore)},
                    {"from-root", Json::array({JsonOf(journal.fromRoot)})},
                    {"to-root", Json::array({JsonOf(journal.toRoot)})},
                    {"live-is-kept", journal.liveIsKept},
                    {"let-go", journal.storeLetGo},
                    {"to", journal.to},
                    {"live", JsonOf(journal.live)},
                    {"store", JsonOf(journal.store)},
                    {"strangers", JsonOf(journal.strangers)},
                    {"remove", JsonOf(journal.remove)},
                    {"restore", JsonOf(journal.restore)},
                    {"install", JsonOf(journal.install)}});
}

Result<SwapJournal> ParseJournal(std::string_view text)
{
    const Json json = ParseNote(text);
    NoteReader reader{json};
    SwapJournal journal;
    Read(reader, "folder", journal.folder);
    const int phase = reader.Number<int>("phase");
    journal.from = reader.Number<LevelCode>("from");
    journal.fromStore = reader.Text("from-store");
    journal.toStore = reader.Text("to-store");
    // A journal of an earlier version has none.
    if (json.contains("from-root"))
        Read(reader, "from-root", journal.fromRoot);
    if (json.contains("to-root"))
        Read(reader, "to-root", journal.toRoot);
    journal.liveIsKept = reader.Flag("live-is-kept");
    if (reader.Has("let-go"))
        journal.storeLetGo = reader.Flag("let-go");
    journal.to = reader.Number<LevelCode>("to");
    const bool sound = Read(reader, "live", journal.live) && Read(reader, "store", journal.store);
    if (reader.Has("strangers"))
        Read(reader, "strangers", journal.strangers);
    Read(reader, "remove", journal.remove);
    reader.Names("restore", journal.restore);
    Read(reader, "install", journal.install);
    if (!reader.Good() || !sound || phase < 0 || phase > static_cast<int>(SwapPhase::Restore))
        return Failure{ErrorCode::Damaged, {}, {}};
    journal.phase = static_cast<SwapPhase>(phase);
    return journal;
}

} // namespace kestrova
