#pragma once

#include "history/change_parts.h"
#include "history/change_targets.h"

#include <set>

namespace kestrova
{

/// The steps of a change of files, for the first time or once more after a killed one. Each may be
/// repeated.
class ChangeSteps
{
public:
    enum class Round {
        First, ///< every content that is to come must be there
        Later  ///< what another hand took away since is passed over
    };
    ChangeSteps(const ChangeParts& parts, const Change& change, std::set<std::string> elsewhere,
                Round round, Heartbeat beat = {});

    Status Go();
    /// After a failure: removes what `Go` added. False when files were overwritten or deleted
    /// already, or when something added could not be removed.
    bool TakeBack();
    /// After `Go`: savegames of folders that the change makes which did not come.
    [[nodiscard]] std::int32_t NotArchived() const;

private:
    /// Fails once Stop was pressed, as long as all can be taken back.
    [[nodiscard]] Status Beat() const;
    Status MakeNewFolders();
    Status Look();
    /// A failure when something that is to come is nowhere.
    [[nodiscard]] Status AllIsThere() const;
    Status PutNew();
    Status KeepOverwritten();
    /// A failure while there is no room for what is to be overwritten.
    [[nodiscard]] Status RoomToOverwrite() const;
    Status Overwrite();
    /// True for a target that goes and stands there as it did; asked right before it is deleted.
    [[nodiscard]] static Result<bool> StillGoes(const ChangeTarget& target);
    Status KeepGoing();
    Status Delete();
    Status Respell(const ChangeTarget& target);
    Status Place(ChangeTarget& target);
    /// Keeps what stands there, and what was to come, in the history.
    Status LeaveForeign(ChangeTarget& target);
    /// Where a content lies now; empty when it is nowhere.
    [[nodiscard]] Path SourceOf(const ChangeTarget& wanted) const;
    enum class Holder { Nobody, Flushed, Unflushed };
    /// Whether a file that stays holds that content.
    [[nodiscard]] Holder HolderOf(const std::string& hash) const;
    /// What loses its place and is nowhere else then is in the history, or, of a level's own
    /// files, beside the level.
    Status Keep(const std::vector<Path>& files);
    /// The same, and then what the way back needs of those that go.
    Status KeepAll(const std::vector<Path>& files, const std::vector<const ChangeTarget*>& going);
    /// True when the change gives that content another place.
    [[nodiscard]] bool HasNewPlace(const std::string& hash) const;
    void RemoveEmptied() const;

    ChangeParts parts_;
    const Change& change_;
    std::set<std::string> elsewhere_;
    Round round_;
    Heartbeat beat_;
    ChangeTargets targets_;
    bool destroyed_ = false; ///< from here on there is only the way forward
};

} // namespace kestrova
