#pragma once

#include "formats/swap_journal.h"
#include "session/session.h"

#include <set>

/// A change of savegames, notes and shots in several folders at once: worked out beforehand, noted
/// in `swap/savegames` of the program's folder, then made. A program that is killed in the middle
/// of it goes on where it was at its next start.
///
/// New names are written first. Then whatever loses its place and exists nowhere else goes to the
/// history. Only then files are overwritten, and at last those that are no longer wanted are
/// deleted, each only when its content was read back from another place and flushed. A file that
/// is neither as it was nor as it is to become has been written by somebody else since: it stays.
namespace kestrova
{

/// A content that comes under a name, and the file that held it when the change was worked out: it
/// may be one that takes no other part.
struct ComingFile {
    std::string name;
    std::string hash;
    std::string source; ///< exact and absolute
};

struct ChangedFolder {
    std::string folder;            ///< exact
    bool made = false;             ///< the change makes it
    std::vector<StateFile> before; ///< files that change or go
    std::vector<ComingFile> after; ///< under a new name, or in place of one of `before`
};

struct StateChange {
    LevelCode code = 0;             ///< whose history takes what loses its place
    std::string reason;             ///< the history's word for it
    std::string header;             ///< exact path of the store's `savegames.bva`
    std::int32_t archivedCount = 0; ///< what that record says afterwards
    std::vector<ChangedFolder> folders;
};

std::string FormatStateChange(const StateChange& change);
/// `Damaged` for anything that this program did not write.
Result<StateChange> ParseStateChange(std::string_view text);

/// Notes the change and makes it. `elsewhere`: hashes of contents that other files hold which take
/// no part. A content that is nowhere any more fails it before anything changes. A failure before
/// anything was overwritten or deleted takes back what was done; a later one leaves the note, and
/// the next start, or the next change, finishes the work.
Status MakeStateChange(Session& session, const StateChange& change,
                       const std::set<std::string>& elsewhere = {});
/// Flushes the change and drops its note: the change is whole, its record written.
Status EndStateChange(const Folders& folders, const StateChange& change);

/// True while a change waits to be finished.
bool StateChangeWaits(const Folders& folders);
/// Finishes a change that a killed or failed run left, its record with it. What another hand took
/// away meanwhile is passed over, and not counted. Nothing to do is done.
Status FinishStateChange(Session& session);

} // namespace kestrova
