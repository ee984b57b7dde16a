#pragma once

#include "core/activity_log.h"
#include "formats/swap_journal.h"
#include "storage/game_files.h"
#include "swap/files_out.h"
#include "swap/placements.h"
#include "swap/swap_parts.h"

namespace kestrova
{

/// One swap under way. It keeps the journal in step with the folder: whenever the program ends
/// between two of its calls, recovery finds what it needs.
class SwapRun : private FilesOut
{
public:
    /// `to` is the level that will come; -1 when none does.
    SwapRun(const SwapParts& parts, ActivityLog& log, LevelCode to);

    using FilesOut::HasBegun;
    using FilesOut::LeavesAnything;
    using FilesOut::MarkerSaidNothing;
    using FilesOut::TakeOut;

    /// What will be installed, known before anything changes.
    void Announce(const std::vector<Placement>& placements);
    /// Reads what the store of `to` holds; false, with words, when it cannot be read.
    bool LookIntoStore();
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

    /// In the order in which they were replaced, as the marker lists them.
    [[nodiscard]] const std::vector<std::string>& Overwritten() const { return overwritten_; }

private:
    std::vector<OwnedFile> put_;
    std::vector<std::string> overwritten_; ///< as the marker lists them
    std::vector<std::string> replaced_;    ///< those that were really replaced
};

} // namespace kestrova
