#pragma once

#include "formats/swap_journal.h"
#include "swap/swap_parts.h"

/// The steps of a full restore. Each may be repeated, and each goes on with the next file where one
/// cannot be brought back: a disk that is full still takes what fits.
namespace kestrova
{

/// What a full restore could not do, by file as the marker names it (`\data\tut1.tr4`).
struct RestoreReport {
    std::vector<std::string> missing; ///< originals that are not back
    std::vector<std::string> left;   ///< files that stayed, since they could not be kept or deleted
    std::vector<std::string> state;  ///< savegames of the level that stood, which are still live
    std::vector<std::string> kept{}; ///< somebody's own work, kept before it went
    std::string reason;              ///< the system's reason for the first of them

    [[nodiscard]] bool Whole() const { return missing.empty() && left.empty() && state.empty(); }
};

/// Deletes what the level brought, as far as it is as it was put there. What stays comes back: the
/// sounds that a compact backup leaves, and files that could not be deleted.
std::vector<OwnedFile> DeleteListed(const PreferencesRecord& preferences, const Folders& folders,
                                    const std::vector<OwnedFile>& files, RestoreReport& report);

/// The critical part of a full restore, from the point that the journal notes: deletes what no
/// original may stand beside, copies the originals back, writes the owner, drops the journal, and
/// brings the savegames of the level that stood to its store, as far as its folder is there. What
/// the player changed is kept first. A failure leaves the journal; a file that could not be brought
/// back is no failure but stands in the report, and the owner record still knows it. `progress` may
/// be null.
Status FinishRestore(const SwapParts& parts, const Folders& folders, const SwapJournal& journal,
                     RestoreReport& report, ProgressScope* progress = nullptr);

/// The files of one folder of the backup over those of the Level Editor's folder, the bar
/// following.
Status RestoreFolder(Machine& machine, const Folders& folders, const Path& folder,
                     RestoreReport& report, ProgressScope* progress);

/// Names what was kept before it went.
void TellKept(Host& host, const RestoreReport& report);
/// Says what is missing and what to do. `told`: originals that were named a moment ago as not back.
void TellIncompleteRestore(Host& host, const RestoreReport& report,
                           const std::vector<std::string>& told = {});

} // namespace kestrova
