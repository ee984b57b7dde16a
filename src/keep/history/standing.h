#pragma once

#include "archive/level_folders.h"
#include "formats/swap_journal.h"
#include "session/archive.h"
#include "session/folders.h"
#include "session/host.h"

/// Which level stands in the Level Editor's folder, by its marker and the owner record.
namespace kestrova
{

/// The code of `CurrentLevelCode` where a level of another archive stands in the folder.
inline constexpr LevelCode foreignLevel = -2;
/// The same where a marker stands that cannot be read: nobody knows which level stands there.
inline constexpr LevelCode unknownLevel = -3;

/// What is known of the Level Editor's folder.
struct Standing {
    /// The level whose files stand there, by the marker; the original configuration without one.
    /// The owner record tells which archive's level it is.
    LevelPlace level;
    /// Whose savegames, notes and shots are live there. The same level, unless a swap could not
    /// take out all that it should.
    LevelPlace state;
    std::optional<OwnerRecord> owner; ///< when it counts
};
/// A failure while marker or owner record cannot be read: nothing may be decided then by which
/// level stands there.
Result<Standing> LookAtStanding(const Folders& folders, const Archive& archive);
/// Tells that failure. The answer is false.
bool TellUnknown(Host& host, const Failure& failure);
Status KnowsStandingLevel(const Folders& folders, const Archive& archive);
/// False, told, when it is not known.
bool TellUnlessKnown(Host& host, const Folders& folders, const Archive& archive);

/// For what is shown: the code is `unknownLevel` when it is not known.
LevelPlace StandingLevel(const Folders& folders, const Archive& archive);
LevelPlace StateOwner(const Folders& folders, const Archive& archive);
/// The code of the level of this archive that stands in the folder, 0 for the original
/// configuration, `foreignLevel` for another archive's level, `unknownLevel` for nobody knows
/// which.
LevelCode CurrentLevelCode(const Folders& folders, const Archive& archive);
/// True when a level of this archive stands there with its own state.
bool LevelStands(const Folders& folders, const Archive& archive, LevelCode code);

/// True for the original configuration of this program.
bool IsOriginals(const Folders& folders, const LevelPlace& level);
/// The folder is the original configuration's, but for what a told failure left in it: at worst the
/// marker of the level that went.
bool IsOriginalButForLeftovers(const Folders& folders, const Standing& standing);

/// The folder with a level's live savegames, notes and shots: the Level Editor's while they are
/// live there, otherwise the level's own store. A failure when nobody can tell whose state stands
/// there.
Result<Path> LiveStateFolder(const Folders& folders, const Archive& archive,
                             const LevelPlace& level);

} // namespace kestrova
