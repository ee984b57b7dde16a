#include "swap/history.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "swap/history_bounds.h"
#include "swap/savegame_info.h"
#include "swap/state_files.h"
#include "swap/swap_records.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

using Json = nlohmann::json;

constexpr int gameSlots = 15;

Path IndexPath(const Session& session, LevelCode code)
{
    return InFolder(InFolder(session.programFolder, RowText(Msg::DirHistory)),
                    GetMsg(Msg::FragHistoryIndex, {ZeroPadded(code, 4)}));
}

std::string Line(const HistoryEntry& entry)
{
    const Json json = {{"id", entry.id},
                       {"hash", entry.hash},
                       {"name", Readable(entry.name)},
                       {"title", entry.title},
                       {"number", entry.number},
                       {"size", entry.size},
                       {"time", entry.modifiedNs},
                       {"kept", entry.keptNs},
                       {"reason", entry.reason},
                       {"home", Readable(entry.home)},
                       {"picture", entry.picture}};
    return json.dump() + "\n";
}

std::optional<HistoryEntry> ParseLine(const std::string& line)
{
    const Json json = Json::parse(line, nullptr, false);
    if (!json.is_object())
        return {};
    HistoryEntry entry;
    const auto text = [&](const char* name, std::string& value) {
        const auto found = json.find(name);
        if (found != json.end() && found->is_string())
            value = found->get<std::string>();
    };
    const auto number = [&](const char* name, auto& value) {
        const auto found = json.find(name);
        if (found != json.end() && found->is_number_integer())
            value = found->get<std::remove_reference_t<decltype(value)>>();
    };
    text("id", entry.id);
    text("hash", entry.hash);
    text("name", entry.name);
    text("title", entry.title);
    text("reason", entry.reason);
    text("home", entry.home);
    number("number", entry.number);
    number("size", entry.size);
    number("time", entry.modifiedNs);
    number("kept", entry.keptNs);
    // An index that does not say it has nothing of the player's under other names but pictures.
    const auto picture = json.find("picture");
    entry.picture = picture != json.end() && picture->is_boolean() ? picture->get<bool>()
                                                                   : !IsPlayersFile(entry.name);
    if (entry.id.empty() || !IsContentHash(entry.hash) || !SafeName(entry.name))
        return {};
    return entry;
}

/// For more files than these one flush of the whole file system is cheaper than one for each.
constexpr std::size_t flushedSingly = 2;

/// The content under its hash, read back; nothing to do when it is there.
Status KeepContent(Session& session, const Path& file, std::string& hash, bool flush, bool& copied)
{
    if (const auto failure = platform::HashOfFile(file, hash))
        return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
    const Path kept = HistoryContent(session, hash);
    std::string keptHash;
    if (FileExists(kept) && !platform::HashOfFile(kept, keptHash) && keptHash == hash)
        return {};
    if (auto status = MakeFolders(kept.parent_path()); !status)
        return status;
    copied = true;
    if (auto status = CopyFileOver(file, kept, {Verify::Size, flush, flush, {}}); !status)
        return status;
    if (platform::HashOfFile(kept, keptHash) || keptHash != hash)
        return Failure{ErrorCode::Differs, TextOf(file), {}};
    return {};
}

/// All contents under their hashes, read back and flushed.
Status KeepContents(Session& session, const std::vector<Path>& files,
                    std::vector<std::string>& hashes)
{
    const bool singly = files.size() <= flushedSingly;
    bool copied = false;
    for (const Path& file : files)
        if (auto status = KeepContent(session, file, hashes.emplace_back(), singly, copied);
            !status)
            return status;
    if (singly || !copied)
        return {};
    const Path folder = InFolder(session.programFolder, RowText(Msg::DirHistoryContent));
    if (const auto failure = platform::SyncFileSystem(ResolvePath(folder)))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure);
    return {};
}

bool LiesWithPictures(const Path& file)
{
    const std::string_view folder = RowText(Msg::DirScreenshots);
    return EqualNames(file.parent_path().filename().native(), folder.substr(1));
}

/// Where a kept file of the level belongs.
Result<Path> PlaceFor(Session& session, LevelCode code, const HistoryEntry& entry)
{
    if (!entry.picture)
        return LiveStateFolder(session, code);
    Path folder = ResolvePath(InFolder(LevelHomeOf(session, code), RowText(Msg::DirScreenshots)));
    if (auto status = MakeFolders(folder); !status)
        return status.Error();
    return folder;
}

} // namespace

Result<HistoryIndex> ReadHistoryIndex(const Session& session, LevelCode code)
{
    const Path file = IndexPath(session, code);
    HistoryIndex index;
    const auto text = ReadFileIfThere(file, UINT64_C(64) << 20);
    if (!text)
        return text.Error();
    if (!*text)
        return index;
    for (std::string& line : Split(**text, '\n')) {
        if (line.empty())
            continue;
        if (auto entry = ParseLine(line))
            index.entries.push_back(std::move(*entry));
        else
            index.strangeLines += line + "\n";
    }
    return index;
}

Status WriteHistoryIndex(const Session& session, LevelCode code, const HistoryIndex& index)
{
    std::string text = index.strangeLines;
    for (const HistoryEntry& entry : index.entries)
        text += Line(entry);
    return WriteWholeFile(IndexPath(session, code), text);
}

Result<std::vector<HistoryEntry>> ReadHistoryOf(const Session& session, const LevelPlace& level)
{
    auto index = ReadHistoryIndex(session, level.code);
    if (!index)
        return index.Error();
    const std::string home = Readable(HomeOf(session, level).native());
    std::map<std::string, bool> others; // of another archive that is there
    std::vector<HistoryEntry> entries;
    for (HistoryEntry& entry : index->entries) {
        const auto [other, first] = others.emplace(entry.home, false);
        if (first && !entry.home.empty() && entry.home != home) {
            const auto isThere = IsFolder(entry.home);
            if (!isThere)
                return isThere.Error();
            other->second = *isThere;
        }
        if (!other->second)
            entries.push_back(std::move(entry));
    }
    return entries;
}

std::vector<HistoryEntry> HistoryOf(const Session& session, const LevelPlace& level)
{
    return ReadHistoryOf(session, level).ValueOr({});
}

Path HistoryContent(const Session& session, const std::string& hash)
{
    return InFolder(session.programFolder, RowText(Msg::DirHistoryContent)) / hash;
}

Result<std::vector<LevelCode>> LevelsWithHistory(const Session& session)
{
    const auto files = ListFiles(InFolder(session.programFolder, RowText(Msg::DirHistory)),
                                 RowText(Msg::PatHistoryIndex));
    if (!files)
        return files.Error();
    std::vector<LevelCode> codes;
    for (const Path& file : *files) {
        const std::string name = BaseNameOf(file.filename().native());
        codes.push_back(LeadingNumber(name.substr(name.find('_') + 1)));
    }
    return codes;
}

Status KeepInHistory(Session& session, const LevelPlace& level, const std::vector<Path>& files,
                     const std::string& reason, std::vector<std::string>* ids)
{
    if (files.empty())
        return {};
    const LevelCode code = level.code;
    const std::string home = HomeOf(session, level).native();
    auto index = ReadHistoryIndex(session, code);
    if (!index)
        return index.Error();
    std::vector<HistoryEntry>& entries = index->entries;
    std::int32_t last = 0;
    for (const HistoryEntry& entry : entries)
        last = std::max(last, LeadingNumber(entry.id.substr(entry.id.find('-') + 1)));
    bool grown = false;
    std::vector<std::string> hashes;
    if (auto status = KeepContents(session, files, hashes); !status)
        return status;
    const std::set<std::string> fresh{hashes.begin(), hashes.end()};
    for (std::size_t i = 0; i < files.size(); ++i) {
        const Path& file = files[i];
        HistoryEntry entry;
        entry.hash = hashes[i];
        entry.name = file.filename().native();
        entry.picture = LiesWithPictures(file);
        const auto same = std::find_if(entries.begin(), entries.end(), [&](const HistoryEntry& e) {
            return e.hash == entry.hash && EqualNames(e.name, Readable(entry.name)) &&
                   e.picture == entry.picture && (e.home.empty() || e.home == Readable(home));
        });
        if (same != entries.end()) {
            if (ids != nullptr)
                ids->push_back(same->id);
            continue;
        }
        const auto facts = LookAt(file);
        if (!facts)
            return facts.Error();
        if (MatchesPattern(entry.name, RowText(Msg::SavegamePattern))) {
            const SavegameInfo info = ReadSavegameInfo(file);
            entry.title = info.title;
            entry.number = info.number;
        }
        entry.id = ZeroPadded(code, 4) + "-" + std::to_string(++last);
        entry.size = facts->size;
        entry.modifiedNs = facts->modifiedNs;
        entry.keptNs = session.machine.NowNs();
        entry.reason = reason;
        entry.home = home;
        if (ids != nullptr)
            ids->push_back(entry.id);
        entries.push_back(std::move(entry));
        grown = true;
    }
    if (!grown)
        return {};
    if (auto status = WriteHistoryIndex(session, code, *index); !status)
        return status;
    BoundHistory(session, level, fresh);
    return {};
}

namespace
{

/// A free place for a kept file in a folder of live state.
Result<Path> FreePlace(const Path& folder, const std::string& name)
{
    const bool savegame = MatchesPattern(name, RowText(Msg::SavegamePattern));
    const std::string ending = ExtensionOf(name);
    for (int number = 0;; ++number) {
        Path place = folder / name;
        if (number > 0)
            place = savegame
                        ? folder / (GetMsg(Msg::SavegameStem) + std::to_string(number - 1))
                        : folder / (BaseNameOf(name) + "-" + std::to_string(number + 1) + ending);
        const auto isFree = IsFree(place);
        if (!isFree)
            return isFree.Error();
        if (*isFree)
            return place;
        if (savegame && number == gameSlots)
            return Failure{ErrorCode::Refused, GetMsg(Msg::HistoryNoFreeSlot), {}};
    }
}

} // namespace

namespace
{

/// The content of an entry, whole.
Result<Path> SoundContent(const Session& session, const HistoryEntry& entry)
{
    Path content = HistoryContent(session, entry.hash);
    std::string hash;
    if (platform::HashOfFile(content, hash) || hash != entry.hash)
        return Failure{ErrorCode::Damaged, GetMsg(Msg::HistoryContentGone), {}};
    return content;
}

Result<HistoryEntry> EntryOf(std::vector<HistoryEntry> entries, const std::string& id)
{
    for (HistoryEntry& entry : entries)
        if (entry.id == id)
            return std::move(entry);
    return Failure{ErrorCode::Missing, GetMsg(Msg::HistoryUnknownId, {id}), {}};
}

Result<Path> CopyOut(const Session& session, const HistoryEntry& entry, const Path& folder)
{
    const auto content = SoundContent(session, entry);
    if (!content)
        return content;
    auto place = FreePlace(folder, entry.name);
    if (!place)
        return place;
    if (auto status = CopyFileOver(*content, *place, {Verify::Content, true, true, {}}); !status)
        return status.Error();
    return place;
}

} // namespace

Result<Path> BringBack(Session& session, LevelCode code, const std::string& id)
{
    auto entries = ReadHistoryOf(session, code);
    if (!entries)
        return entries.Error();
    const auto entry = EntryOf(std::move(entries).Value(), id);
    if (!entry)
        return entry.Error();
    const Path level = LevelHomeOf(session, code);
    const auto isThere = IsFolder(level);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return Failure{ErrorCode::Missing, {}, GetMsg(Msg::HistoryLevelGone, {TextOf(level), id})};
    const auto home = PlaceFor(session, code, *entry);
    if (!home)
        return home;
    return CopyOut(session, *entry, ResolvePath(*home));
}

Result<Path> BringBackTo(const Session& session, LevelCode code, const std::string& id,
                         const Path& folder)
{
    auto index = ReadHistoryIndex(session, code);
    if (!index)
        return index.Error();
    const auto entry = EntryOf(std::move(index->entries), id);
    if (!entry)
        return entry.Error();
    const Path place = ResolvePath(folder);
    if (auto status = MakeFolders(place); !status)
        return status.Error();
    return CopyOut(session, *entry, place);
}

} // namespace kestrova
