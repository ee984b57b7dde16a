#include "swap/backup_state.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_set.h"
#include "core/text.h"
#include "formats/marker.h"
#include "formats/trle_folder.h"
#include "history/players_files.h"
#include "history/swap_journal_file.h"
#include "originals/backup_folders.h"
#include "session/tree_progress.h"
#include "swap/file_names.h"

#include <algorithm>

namespace kestrova
{

namespace
{

enum class Fit { Same, Differs };

/// The same when every file of the backup stands in the Level Editor's folder with the same bytes,
/// but for those that a level there replaced.
Result<Fit> CompareWithFolder(Host& host, const Folders& folders)
{
    const Path backup = ResolvePath(folders.Backup());
    const Path trle = ResolvePath(folders.trle);
    const auto tree = ScanTreeIfThere(backup);
    if (!tree)
        return tree.Error();
    if (tree->folders.empty())
        return Fit::Differs;
    const auto bytes = ReadFileIfThere(folders.Marker());
    if (!bytes)
        return bytes.Error();
    const MarkerContent marker = ParseMarker(bytes->value_or(std::string{}));
    const auto progress = BeginScanning(host);
    NameSet exchanged;
    for (const std::string& name : marker.overwritten)
        exchanged.Add(name);
    const bool same = std::all_of(tree->files.begin(), tree->files.end(), [&](const Path& file) {
        progress->Step();
        const Path relative = file.lexically_relative(backup);
        return IsPlayersPlace(relative) || exchanged.Has(ToBackslashes(relative)) ||
               SameContent(file, trle / relative, [&] { return progress->Step(), true; });
    });
    return same ? Fit::Same : Fit::Differs;
}

} // namespace

Result<std::optional<Path>> BackupSeemsOfAnother(const Folders& folders)
{
    const auto origin = BackupOrigin(folders);
    if (!origin)
        return origin.Error();
    if (!*origin || Path{(*origin)->path} == folders.trle)
        return std::optional<Path>{};
    const auto isThis = HasMark(folders.trle, **origin);
    if (!isThis)
        return isThis.Error();
    return *isThis ? std::optional<Path>{} : std::optional{Path{(*origin)->path}};
}

Result<std::optional<Path>> BackupOfAnotherFolder(Host& host, const Folders& folders,
                                                  const PreferencesRecord& preferences)
{
    auto other = BackupSeemsOfAnother(folders);
    if (!other)
        return other;
    if (*other) {
        const auto fit = CompareWithFolder(host, folders);
        if (!fit)
            return fit.Error();
        if (*fit == Fit::Differs)
            return other;
    }
    // Moved, or of the same content: from now on it counts as this folder's.
    if (LookAtBackup(folders).ValueOr(BackupState::Missing) == BackupState::Present)
        (void)NoteBackupOrigin(folders,
                               preferences.fullBackup); // asked again otherwise
    return std::optional<Path>{};
}

Result<BackupState> LookAtBackup(const Folders& folders)
{
    struct Sign {
        std::string_view folder;
        std::string_view pattern;
    };
    constexpr Sign signs[] = {{OnDisk::FragRoot, OnDisk::PatDat},
                              {OnDisk::FragRoot, OnDisk::PatBmp},
                              {OnDisk::DirData, OnDisk::PatTr4}};
    for (const Sign& sign : signs) {
        const auto files = ListFiles(InFolder(folders.Backup(), sign.folder), sign.pattern);
        if (!files)
            return files.Error();
        if (files->empty())
            return BackupState::Missing;
    }
    return BackupState::Present;
}

bool BackupIsAway(const Folders& folders)
{
    return LookAtBackup(folders).ValueOr(BackupState::Missing) == BackupState::Missing;
}

} // namespace kestrova
