#pragma once

#include "formats/marker.h"
#include "formats/swap_journal.h"
#include "history/standing.h"
#include "session/folders.h"
#include "storage/game_files.h"
#include "swap/owned_files.h"

/// Where a level's files stand in the Level Editor's folder, and what they replaced there.
namespace kestrova
{

/// Where a level's file goes: the fragment of its folder and its name.
struct Placement {
    ReadyFile file;
    std::string target; ///< `\data\level1.tr4`
    Path relative;      ///< `data/level1.tr4`
};
/// The files that reach the Level Editor's folder, by class in the order of the marker's list:
/// `*.dat`, `*.h`, the three loose files, `*.tr4`, `*.pak`, `*.wav`. `refused` gets names that no
/// marker could hold.
std::vector<Placement> PlaceFiles(const std::vector<ReadyFile>& files,
                                  std::vector<std::string>& refused);
/// True for a place that a level's file can have. What else a marker names is no level's.
bool IsLevelPlace(const Path& relative);
/// The installed language file that must go because the level brings another one: its name, empty
/// when none must. `present` are the `*.dat` files of the folder before the swap's copies.
std::string LanguageFileToRemove(const std::vector<Path>& present,
                                 const std::vector<Placement>& placements);
/// What the folder holds beside the originals: by the owner record alone where it counts, otherwise
/// by the marker.
struct Belongings {
    std::vector<OwnedFile> added; ///< size and time 0 when only the marker tells
    std::vector<std::string> overwritten;
    std::vector<std::string> refused; ///< marker entries that no level brings
};
Belongings BelongingsOf(const MarkerContent& marker, const std::optional<OwnerRecord>& owner);
/// What stands in the folder beside the originals, by marker and owner record.
Result<Belongings> StandingBelongings(const Folders& folders, const Standing& standing);
/// The place below the Level Editor's folder that `RestoreOriginal` fills: of files that differ by
/// case alone, the one that it replaces.
Path PlaceOfOriginal(const Folders& folders, const Path& relative);
/// An original back from the backup, in the backup's spelling, without the read-only bit.
Status RestoreOriginal(const Folders& folders, const Path& relative);

} // namespace kestrova
