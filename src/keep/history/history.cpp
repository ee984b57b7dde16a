#include "history/history.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/savegame_info.h"
#include "formats/savegame_records.h"
#include "formats/trle_folder.h"
#include "history/history_bounds.h"
#include "history/players_files.h"
#include "platform/file_content.h"
#include "words/history.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

/// The content under its hash, read back; nothing to do when it is there.
Status KeepContent(const Folders& folders, const Path& file, std::string& hash, bool flush,
                   bool& copied)
{
    if (const auto failure = platform::HashOfFile(file, hash))
        return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
    const Path kept = HistoryContent(folders, hash);
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
Status KeepContents(const Folders& folders, const std::vector<Path>& files,
                    std::vector<std::string>& hashes)
{
    const bool singly = files.size() <= flushedSingly;
    bool copied = false;
    for (const Path& file : files)
        if (auto status = KeepContent(folders, file, hashes.emplace_back(), singly, copied);
            !status)
            return status;
    if (singly || !copied)
        return {};
    const Path folder = InFolder(folders.program, OnDisk::DirHistoryContent);
    if (const auto failure = platform::SyncFileSystem(ResolvePath(folder)))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(folder), failure);
    return {};
}

bool LiesWithPictures(const Path& file)
{
    const std::string_view folder = OnDisk::DirScreenshots;
    return EqualNames(file.parent_path().filename().native(), folder.substr(1));
}

} // namespace

Result<std::vector<HistoryEntry>> ReadHistoryOf(const Folders& folders, const LevelPlace& level)
{
    auto index = ReadHistoryIndex(folders, level.code);
    if (!index)
        return index.Error();
    const std::string home = Readable(HomeOf(folders, level).native());
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

std::vector<HistoryEntry> HistoryOf(const Folders& folders, const LevelPlace& level)
{
    return ReadHistoryOf(folders, level).ValueOr({});
}

Path HistoryContent(const Folders& folders, const std::string& hash)
{
    return InFolder(folders.program, OnDisk::DirHistoryContent) / hash;
}

Result<std::vector<LevelCode>> LevelsWithHistory(const Folders& folders)
{
    const auto files =
        ListFiles(InFolder(folders.program, OnDisk::DirHistory), OnDisk::PatHistoryIndex);
    if (!files)
        return files.Error();
    std::vector<LevelCode> codes;
    for (const Path& file : *files) {
        const std::string name = BaseNameOf(file.filename().native());
        codes.push_back(LeadingNumber(name.substr(name.find('_') + 1)));
    }
    return codes;
}

Status KeepInHistory(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                     const LevelPlace& level, const std::vector<Path>& files,
                     const std::string& reason, std::vector<std::string>* ids)
{
    if (files.empty())
        return {};
    const LevelCode code = level.code;
    const std::string home = HomeOf(folders, level).native();
    auto index = ReadHistoryIndex(folders, code);
    if (!index)
        return index.Error();
    std::vector<HistoryEntry>& entries = index->entries;
    bool grown = false;
    std::vector<std::string> hashes;
    if (auto status = KeepContents(folders, files, hashes); !status)
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
        if (MatchesPattern(entry.name, OnDisk::SavegamePattern)) {
            const SavegameInfo info = ReadSavegameInfo(file);
            entry.title = info.title;
            entry.number = info.number;
        }
        entry.id = NextHistoryId(*index, code);
        entry.size = facts->size;
        entry.modifiedNs = facts->modifiedNs;
        entry.keptNs = machine.NowNs();
        entry.reason = reason;
        entry.home = home;
        if (ids != nullptr)
            ids->push_back(entry.id);
        entries.push_back(std::move(entry));
        grown = true;
    }
    if (!grown)
        return {};
    if (auto status = WriteHistoryIndex(folders, code, *index); !status)
        return status;
    BoundHistory(folders, settings, level, fresh);
    return {};
}

namespace
{

/// A free place for a kept file in a folder of live state.
Result<Path> FreePlace(const Path& folder, const std::string& name)
{
    const bool savegame = MatchesPattern(name, OnDisk::SavegamePattern);
    const std::string ending = ExtensionOf(name);
    const auto nameOf = [&](int number) -> Path {
        if (number == 0)
            return folder / name;
        if (savegame)
            return folder / (std::string{OnDisk::SavegameStem} + std::to_string(number - 1));
        return folder / (BaseNameOf(name) + "-" + std::to_string(number + 1) + ending);
    };
    auto place = savegame ? FirstFree(nameOf, 0, int{gameSlotCount}) : FirstFree(nameOf, 0);
    if (place && place->empty())
        return Failure{ErrorCode::Refused, GetMsg(Msg::HistoryNoFreeSlot), {}};
    return place;
}

/// The content of an entry, whole.
Result<Path> SoundContent(const Folders& folders, const HistoryEntry& entry)
{
    Path content = HistoryContent(folders, entry.hash);
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

} // namespace

Result<Path> CopyOutOfHistory(const Folders& folders, const HistoryEntry& entry, const Path& folder)
{
    const auto content = SoundContent(folders, entry);
    if (!content)
        return content;
    auto place = FreePlace(folder, entry.name);
    if (!place)
        return place;
    if (auto status = CopyFileOver(*content, *place, {Verify::Content, true, true, {}}); !status)
        return status.Error();
    return place;
}

Result<HistoryEntry> HistoryEntryOf(const Folders& folders, const LevelPlace& level,
                                    const std::string& id)
{
    auto entries = ReadHistoryOf(folders, level);
    if (!entries)
        return entries.Error();
    return EntryOf(std::move(entries).Value(), id);
}

Result<Path> BringBackTo(const Folders& folders, LevelCode code, const std::string& id,
                         const Path& folder)
{
    auto index = ReadHistoryIndex(folders, code);
    if (!index)
        return index.Error();
    const auto entry = EntryOf(std::move(index->entries), id);
    if (!entry)
        return entry.Error();
    const Path place = ResolvePath(folder);
    if (auto status = MakeFolders(place); !status)
        return status.Error();
    return CopyOutOfHistory(folders, *entry, place);
}

} // namespace kestrova
