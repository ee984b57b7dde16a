#pragma once

#include "formats/archive_file.h"
#include "session/archive.h"
#include "session/disc_reader.h"
#include "session/folders.h"
#include "session/host.h"

/// Look-up in the archive in memory, and where the files of a level lie.
namespace kestrova
{

/// Index of the record with that code; -1 when there is none.
std::ptrdiff_t FindLevel(const std::vector<LevelRecord>& levels, LevelCode code);
std::ptrdiff_t FindLevel(const Archive& archive, LevelCode code);
/// The trimmed name of a level; empty for an unknown code.
std::string LevelNameOf(const Archive& archive, LevelCode code);
/// The largest code plus 1; 0 for an empty archive.
LevelCode NextLevelCode(const Archive& archive);
/// `\LEVEL_0012`: four digits at least.
std::string LevelFolderName(LevelCode code);
/// The level's folder on the hard disk: the program's own for the original configuration,
/// otherwise below the archive's.
Path LevelHomeOf(const Folders& folders, LevelCode code);
/// The folder that holds the level's files: the same, or one on a disc. `Missing`, in words,
/// while that disc is not there.
Result<Path> LevelFolderOf(const Folders& folders, const Archive& archive, LevelCode code,
                           DiscWish wish = DiscWish::Ask);
/// The `files` of that folder.
Result<Path> FilesFolderOf(const Folders& folders, const Archive& archive, LevelCode code,
                           DiscWish wish = DiscWish::Ask);
/// The level's `backup_savegames`: its state while another level stands in the folder.
Path StateStoreOf(const Folders& folders, LevelCode code);

/// A level by its code and its own folder: two archives that are used by turns have levels of one
/// code.
struct LevelPlace {
    /// Without a folder: the level of the archive in memory.
    LevelPlace(LevelCode levelCode, Path folder = {}) // NOLINT(google-explicit-constructor)
        : code(levelCode), home(std::move(folder))
    {
    }
    LevelCode code;
    Path home;
};
/// The folder of that level.
Path HomeOf(const Folders& folders, const LevelPlace& level);
Path StateStoreOf(const Folders& folders, const LevelPlace& level);
/// The level's folder and its four sub-folders; the first failure ends it.
Status MakeLevelSubfolders(const Path& folder);
/// True when the folder is there with something in it where levels of the archive should lie: of a
/// drive that was disconnected the mount point may stand there, empty.
Result<bool> IsArchiveFolder(const Archive& archive, const Path& folder);
/// Fails when the folder that the archive's levels lie in is not there now, as when its drive was
/// disconnected: a level's folder that is missing says nothing then.
Status ArchiveFolderIsThere(const Archive& archive);
/// The header tells again which disc is the last one; without any, both folders are one.
void FollowDiscs(Archive& archive);
bool IsArchiveOnCd(const Archive& archive);
/// `Refused` when the level's files lie on a disc.
Status GuardLevelOnCd(const LevelRecord& level);

} // namespace kestrova
