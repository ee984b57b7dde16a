#pragma once

#include "core/activity_log.h"
#include "core/name_set.h"
#include "formats/swap_journal.h"
#include "history/standing.h"
#include "session/session.h"
#include "storage/game_files.h"
#include "swap/placements.h"
#include "swap/state_out.h"

#include <set>

namespace kestrova
{

/// One swap under way. It keeps the journal in step with the folder: whenever the program ends
/// between two of its calls, recovery finds what it needs.
class SwapRun : private StateOut
{
public:
    /// `to` is the level that will come; -1 when none does.
    SwapRun(Session& session, ActivityLog& log, LevelCode to);

    /// What will be installed, known before anything changes.
    void Announce(const std::vector<Placement>& placements);
    /// Reads what the store of `to` holds; false, with words, when it cannot be read.
    bool LookIntoStore();
    /// Takes out what stands in the folder. `previous` is the answer for callers that know only
    /// codes. False when the player's files could not be kept: then nothing has changed.
    bool TakeOut(LevelCode& previous);
    /// The saved state of `to` comes in; False, with words, when that could not be noted.
    bool BringIn(bool logged);
    /// Keeps what stands in the way of the level's files and is safe nowhere else. A target whose
    /// keeping failed is spared by `Put`.
    void KeepTargets(const std::vector<Placement>& placements);
    /// Puts one file in place; `overwritten` tells whether the target was there.
    Status Put(const Placement& placement, bool& overwritten);
    /// Deletes the installed language file; it comes back with the replaced ones.
    bool RemoveLanguageFile(const std::string& name);
    /// The folder stands as it was meant, or as the person was told: the journal becomes the owner
    /// record.
    bool Settle();

    /// True when the removal left files behind, or originals are not back.
    [[nodiscard]] bool LeavesAnything() const;
    /// True when a marker stood there that named no level, and no record knew better.
    [[nodiscard]] bool MarkerSaidNothing() const { return markerSaidNothing_; }
    /// True once a journal was written that is still there.
    [[nodiscard]] bool HasBegun() const { return begun_; }
    /// In the order in which they were replaced, as the marker lists them.
    [[nodiscard]] const std::vector<std::string>& Overwritten() const { return overwritten_; }

private:
    /// True when the level that is to come stands there already, with its own state.
    [[nodiscard]] bool Stands(LevelCode marked) const;
    [[nodiscard]] LevelPlace StandingPlace(LevelCode marked) const;
    bool TakeOutOriginal(LevelCode& previous);
    [[nodiscard]] Result<bool> StateIsHomeless() const;
    /// False when a file that the level brought is still there.
    bool DeleteAdded(const LevelPlace& level, const Belongings& belongings);
    void RestoreOverwritten(const std::vector<std::string>& names);
    /// Keeps files of the folder that are safe nowhere else; the failed ones are told and spared.
    void Keep(const std::vector<Path>& relatives);
    [[nodiscard]] bool IsSpared(const Path& relative) const;

    bool markerSaidNothing_ = false;
    std::vector<OwnedFile> leftAdded_; ///< what a removal left behind
    std::set<Path> safeLeft_; ///< those of them that could not be deleted, as they are spelled
    std::vector<std::string> leftOverwritten_;
    std::vector<OwnedFile> put_;
    std::vector<std::string> overwritten_; ///< as the marker lists them
    std::vector<std::string> replaced_;    ///< those that were really replaced
    NameSet spared_;                       ///< could not be kept, so they stay
    std::vector<std::string> kept_;        ///< told at the end
};

} // namespace kestrova
