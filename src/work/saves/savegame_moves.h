#pragma once

#include "archive/archive_parts.h"

/// The two operations between the game's fifteen slots and a level's archive slots. They speak to
/// nobody: a failure before anything of the player's was overwritten or deleted leaves all as it
/// was; after a later one `ChangeWaits`, and the next start or the next move finishes it.
namespace kestrova
{

/// What a move came to.
struct SavegamesMoved {
    int live = 0;    ///< how many savegames stood in the game's slots before
    int moved = 0;   ///< went into the new archive slot, or came back from one
    int known = 0;   ///< were on the other side already
    int slot = 0;    ///< the archive slot; 0 when none took part
    int waiting = 0; ///< found no room and wait in that slot
    /// Ids of savegames that left both sides: another content has their save number.
    std::vector<std::string> kept{};
};

/// Names those that are in the history alone now, and how they come back; empty when none are.
std::string WordsAboutKept(const SavegamesMoved& moved, LevelCode code);

/// Frees the game's slots of the selected level: what no archive slot has goes into a new one, and
/// only the newest savegame stays, in slot 0. Does nothing while no level is selected.
Result<SavegamesMoved> ArchiveSavegames(const ArchiveParts& parts);
/// Brings back the last archive slot that holds anything; the game's slots are packed anew from 0,
/// oldest first. What was live before is in the history too.
Result<SavegamesMoved> RestoreSavegames(const ArchiveParts& parts);

/// The same for any level.
Result<SavegamesMoved> ArchiveSavegamesOf(const ArchiveParts& parts, LevelCode code);
Result<SavegamesMoved> RestoreSavegamesOf(const ArchiveParts& parts, LevelCode code);

/// Finishes what an earlier move left. A failure also while a swap waits to be mended: nothing may
/// move savegames then.
Status EndEarlierMove(const ArchiveParts& parts);

} // namespace kestrova
