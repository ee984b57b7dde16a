#pragma once

#include "archive/level_folders.h"
#include "session/session.h"
#include "swap/swap_records.h"

/// `Kestrva.txt` in the root of the Level Editor's folder: which level stands there, which files it
/// brought, which of them replaced an original. Text in Windows-1252, lines ended by CRLF:
///
///     : Don't remove this file!
///     : It is necessary at Kestrova
///     : to know current configuration in TRLE
///      (a single blank)
///     #LEVEL_CODE=0012#
///     #LEVEL_NAME=…#
///     #OVERWROTEN_FILES=\script.dat|\data\level1.tr4#
///     #COPIED_FILES=\script.dat|\data\level1.tr4|\audio\107.wav#
///
/// A tag counts at its line's start only, so that no level's name holds one; a value ends at the
/// next `#`.
namespace kestrova
{

/// The value behind a tag (compared without regard to case), trimmed; empty when it is absent.
std::string MarkerValue(std::string_view tag, std::string_view text);
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
Result<Standing> LookAtStanding(const Session& session);
/// Tells that failure. The answer is false.
bool TellUnknown(Session& session, const Failure& failure);
Status KnowsStandingLevel(const Session& session);
/// False, told, when it is not known.
bool TellUnlessKnown(Session& session);

/// For what is shown: the code is `unknownLevel` when it is not known.
LevelPlace StandingLevel(const Session& session);
LevelPlace StateOwner(const Session& session);
/// The code of the level of this archive that stands in the folder, 0 for the original
/// configuration, `foreignLevel` for another archive's level, `unknownLevel` for nobody knows
/// which.
LevelCode CurrentLevelCode(const Session& session);
/// True when a level of this archive stands there with its own state.
bool LevelStands(const Session& session, LevelCode code);

/// Lines 1 to 6, as they stand while an installation is under way.
std::string MarkerHead(LevelCode code, const std::string& name);
/// The whole marker.
std::string MarkerText(LevelCode code, const std::string& name,
                       const std::vector<std::string>& overwritten,
                       const std::vector<std::string>& copied);

struct MarkerContent {
    bool hasText = false;
    LevelCode code = -1; ///< -1: no code in it
    std::vector<std::string> overwritten;
    std::vector<std::string> copied;
};
MarkerContent ParseMarker(std::string_view text);

/// True for the original configuration of this program.
bool IsOriginals(const Session& session, const LevelPlace& level);
/// The folder is the original configuration's, but for what a told failure left in it: at worst the
/// marker of the level that went.
bool IsOriginalButForLeftovers(const Session& session, const Standing& standing);

} // namespace kestrova
