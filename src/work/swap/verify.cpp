#include "swap/verify.h"

#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/players_files.h"
#include "history/swap_journal_file.h"
#include "originals/backup_sums.h"
#include "originals/backup_waves.h"
#include "platform/file_content.h"
#include "platform/folder_memory.h"
#include "storage/game_files.h"
#include "swap/file_names.h"
#include "swap/owned_files.h"
#include "swap/placements.h"

#include <map>

namespace kestrova
{

namespace
{

/// Of the folders whose names differ by case alone the one that the originals came from.
bool IsSpelledInBackup(const Path& backup, const Path& name)
{
    const auto facts = LookAtSpelled(backup / name);
    return !facts || facts->kind == platform::FileKind::Folder;
}

/// What is noted of the backup's files, each asked for once.
class NotedSums
{
public:
    explicit NotedSums(const std::vector<NotedFile>& noted)
    {
        for (const NotedFile& file : noted)
            hashes_.emplace(file.name, file.hash);
    }
    /// Empty where nothing is noted.
    std::string Take(const Path& relative)
    {
        auto found = hashes_.extract(relative.native());
        return found.empty() ? std::string{} : std::move(found.mapped());
    }
    /// Files that nobody asked for are not there.
    void AddGone(std::vector<Difference>& found) const
    {
        for (const auto& [name, hash] : hashes_)
            found.push_back({Mismatch::BackupDamaged, Readable(ToBackslashes(name))});
    }

private:
    std::map<std::string, std::string> hashes_; ///< by name
};

bool HasContent(const Path& file, const std::string& hash)
{
    std::string now;
    return !platform::HashOfFile(file, now) && now == hash;
}

/// One original against the file in its place. Of two that differ the note tells which one is not
/// as it was.
Status CompareOriginal(const Path& original, const Path& place, const std::string& name,
                       const std::string& noted, std::vector<Difference>& found)
{
    const auto stands = IsFile(place);
    if (!stands)
        return stands.Error();
    if (*stands && SameContent(original, place))
        return {};
    const bool isSound = noted.empty() || HasContent(original, noted);
    if (!isSound)
        found.push_back({Mismatch::BackupDamaged, name});
    if (!*stands)
        found.push_back({Mismatch::Missing, name});
    else if (isSound || !HasContent(place, noted))
        found.push_back({Mismatch::Differs, name});
    return {};
}

Status CompareWithBackup(const Folders& folders, const PreferencesRecord& preferences,
                         const std::vector<Placement>& level,
                         const std::vector<std::string>& replaced, std::vector<Difference>& found)
{
    NameSet levels;
    for (const Placement& placement : level)
        levels.Add(placement.relative.native());
    NameSet exchanged;
    for (const std::string& name : replaced)
        exchanged.Add(name);
    const auto isLevels = [&](const Path& relative) { return levels.Has(relative.native()); };
    const auto isReplaced = [&](const Path& relative) {
        return exchanged.Has(ToBackslashes(relative));
    };
    const Path backup = ResolvePath(folders.Backup());
    const Path trle = ResolvePath(folders.trle);
    const auto tree = ScanTree(backup);
    if (!tree)
        return tree.Error();
    const auto noted = NotedBackupFiles(folders);
    if (!noted)
        return noted.Error();
    NotedSums sums{*noted};
    for (const Path& file : tree->files) {
        const Path relative = file.lexically_relative(backup);
        const std::string hash = sums.Take(relative);
        const std::string name = Readable(ToBackslashes(relative));
        if (!isLevels(relative) && !isReplaced(relative) && !IsPlayersPlace(relative)) {
            if (auto status = CompareOriginal(file, trle / relative, name, hash, found); !status)
                return status;
        } else if (!hash.empty() && !HasContent(file, hash)) {
            found.push_back({Mismatch::BackupDamaged, name});
        }
    }
    sums.AddGone(found);
    for (const std::string_view fragment : {OnDisk::DirData, OnDisk::DirAudio}) {
        const auto twins = CaseTwins(InFolder(trle, fragment));
        if (!twins)
            return twins.Error();
        for (const Path& twin : *twins)
            if (twins->size() > 1 && !IsSpelledInBackup(backup, twin.filename()))
                found.push_back(
                    {Mismatch::Unexpected, Readable(ToBackslashes(twin.lexically_relative(trle)))});
    }
    for (const std::string_view fragment : {OnDisk::FragRoot, OnDisk::DirData, OnDisk::DirAudio}) {
        // Of the sounds a compact backup knows nothing.
        if (StaysWithCompactBackup(preferences, std::string{fragment} + '\\'))
            continue;
        const auto files = ListFiles(InFolder(trle, fragment).lexically_normal(), OnDisk::PatAll);
        if (!files)
            return files.Error();
        for (const Path& file : *files) {
            const Path relative = file.lexically_relative(trle);
            if (!IsLevelPlace(relative) || isLevels(relative))
                continue;
            const auto isOriginal = IsFile(backup / relative);
            if (!isOriginal)
                return isOriginal.Error();
            if (!*isOriginal)
                found.push_back({Mismatch::Unexpected, Readable(ToBackslashes(relative))});
        }
    }
    return {};
}

Result<std::vector<Placement>> PlacedFiles(const SwapParts& parts, const LevelPlace& level,
                                           const Path& staging)
{
    const bool ours = CurrentLevelCode(parts.folders, parts.archive) == level.code;
    const Result<Path> source =
        ours ? FilesFolderOf(parts.folders, parts.archive, level.code, DiscWish::Look)
             : InFolder(HomeOf(parts.folders, level), OnDisk::DirFiles);
    if (!source)
        return source.Error();
    if (!FolderExists(*source))
        return Failure{ErrorCode::Missing, TextOf(*source), {}};
    auto ready =
        ReadyLevelFiles(parts.host, parts.machine, parts.sounds, *source, staging, true, nullptr);
    if (!ready)
        return ready.Error();
    std::vector<std::string> refused;
    return PlaceFiles(*ready, refused);
}

/// Originals that a swap could not bring back, as far as they are still not there, and waves that
/// a compact backup does not hold.
Status AddOwed(const Folders& folders, const PreferencesRecord& preferences,
               const std::optional<OwnerRecord>& owner, std::vector<Difference>& found)
{
    NameSet told;
    for (const Difference& difference : found)
        told.Add(difference.file);
    const auto waves = MissingWaves(folders, preferences);
    if (!waves)
        return waves.Error();
    for (const std::string& wave : *waves)
        if (const std::string name = Readable(std::string{OnDisk::FragAudio} + wave);
            !told.Has(name))
            found.push_back({Mismatch::Missing, name});
    if (!owner)
        return {};
    for (const std::string& name : owner->owed) {
        const auto relative = SafeRelative(name);
        if (!relative || told.Has(Readable(name)))
            continue;
        const auto stands = IsFile(folders.trle / *relative);
        if (!stands)
            return stands.Error();
        if (!*stands)
            found.push_back({Mismatch::Missing, Readable(name)});
    }
    return {};
}

} // namespace

Result<std::vector<Difference>> VerifyFolder(const SwapParts& parts)
{
    const platform::FolderMemory folders;
    std::vector<Difference> found;
    const auto isThere = IsFolder(parts.folders.trle);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return Failure{ErrorCode::Missing, TextOf(parts.folders.trle), {}};
    const auto known = LookAtStanding(parts.folders, parts.archive);
    if (!known)
        return known.Error();
    const LevelPlace& standing = known->level;
    const WorkFolder staging{FreshPlaceIn(parts.folders.program)};
    std::vector<Placement> level;
    std::vector<std::string> replaced;
    if (standing.code != originalCode) {
        auto placed = PlacedFiles(parts, standing, staging.Folder());
        if (!placed)
            return placed.Error();
        level = std::move(placed).Value();
        auto belongings = StandingBelongings(parts.folders, *known);
        if (!belongings)
            return belongings.Error();
        replaced = std::move(belongings->overwritten);
    }
    for (const Placement& placement : level) {
        const Path target = parts.folders.trle / placement.relative;
        const auto stands = IsFile(target);
        if (!stands)
            return stands.Error();
        if (!*stands)
            found.push_back({Mismatch::Missing, Readable(placement.target)});
        else if (!SameContent(placement.file.path, target))
            found.push_back({Mismatch::Differs, Readable(placement.target)});
    }
    const auto hasBackup = IsFolder(parts.folders.Backup());
    if (!hasBackup)
        return hasBackup.Error();
    if (*hasBackup)
        if (auto status =
                CompareWithBackup(parts.folders, parts.preferences, level, replaced, found);
            !status)
            return status.Error();
    if (auto status = AddOwed(parts.folders, parts.preferences, known->owner, found); !status)
        return status.Error();
    return found;
}

} // namespace kestrova
