#pragma once

#include "session/session.h"

/// Look-up in the archive in memory, and where the files of a level lie.
namespace kestrova
{

/// Index of the record with that code; -1 when there is none.
std::ptrdiff_t FindLevel(const Session& session, LevelCode code);
/// The trimmed name of a level; empty for an unknown code.
std::string LevelNameOf(const Session& session, LevelCode code);
/// The largest code plus 1; 0 for an empty archive.
LevelCode NextLevelCode(const Session& session);
/// `\LEVEL_0012`: four digits at least.
std::string LevelFolderName(LevelCode code);
/// The level's folder on the hard disk: the program's own for the original configuration,
/// otherwise below the archive's.
Path LevelHomeOf(const Session& session, LevelCode code);
/// The folder that holds the level's files: the same, or one on a disc. `Missing`, its reason in
/// words, while that disc is not there.
Result<Path> LevelFolderOf(const Session& session, LevelCode code);
/// The level's `backup_savegames`: its state while another level stands in the folder.
Path StateStoreOf(const Session& session, LevelCode code);

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
Path HomeOf(const Session& session, const LevelPlace& level);
Path StateStoreOf(const Session& session, const LevelPlace& level);
/// The level's folder and its four sub-folders; the first failure ends it.
Status MakeLevelSubfolders(const Path& folder);
/// False, with words, when the folder that the archive's levels lie in is not there now, as when
/// its drive was disconnected: a level's folder that is missing says nothing then.
bool IsArchiveFolderThere(Session& session);
bool IsArchiveOnCd(const Session& session);
/// True, and a message, when the level's files lie on a disc.
bool GuardLevelOnCd(Session& session, const LevelRecord& level);

} // namespace kestrova
