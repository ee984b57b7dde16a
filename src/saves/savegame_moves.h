#pragma once

#include "session/session.h"

/// The two operations between the game's fifteen slots and a level's archive slots. They speak to
/// nobody: a failure before anything of the player's was overwritten or deleted leaves all as it
/// was; after a later one `SavegameMoveWaits`, and the next start or the next move finishes it.
namespace kestrova
{

/// Frees the game's slots of the selected level: what no archive slot has goes into a new one, and
/// only the newest savegame stays, in slot 0. Does nothing while no level is selected.
Status ArchiveSavegames(Session& session);
/// Brings back the last archive slot that holds anything; the game's slots are packed anew from 0,
/// oldest first. What was live before is in the history too.
Status RestoreSavegames(Session& session);

/// The same for any level.
Status ArchiveSavegamesOf(Session& session, LevelCode code);
Status RestoreSavegamesOf(Session& session, LevelCode code);

/// Finishes what an earlier move left. A failure also while a swap waits to be mended: nothing may
/// move savegames then.
Status EndEarlierMove(Session& session);
/// True while a move that failed or was killed waits to be finished.
bool SavegameMoveWaits(const Session& session);

inline constexpr std::size_t gameSlotCount = 15;

} // namespace kestrova
