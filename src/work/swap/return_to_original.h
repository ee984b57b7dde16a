#pragma once

#include "archive/level_folders.h"
#include "formats/swap_journal.h"
#include "swap/swap_parts.h"

/// The way back to the original configuration of what a swap left half done, or said that it left.
namespace kestrova
{

/// What mending had to leave, each noted so that the next start tries it again.
struct LeftInTrle {
    std::vector<std::string> kept;   ///< of somebody's own making, in the vault now
    std::vector<std::string> spared; ///< could not be kept, so they stand where they are
    std::vector<OwnedFile> added;    ///< could not be deleted
    std::vector<OwnedFile>
        unsure; ///< the level's or an original: without the backup nobody can tell
    std::vector<std::string> overwritten; ///< could not be brought back
    std::vector<OwnedFile> strangers;
};

void TellLeftovers(Host& host, const Folders& folders, const LeftInTrle& left);

/// Everything behind the point where the live state was stored ends at the original configuration.
/// Each step may be repeated.
Status ReturnToOriginal(const SwapParts& parts, const Folders& folders, SwapJournal journal,
                        LeftInTrle& left);
/// What a swap built beside its targets in the Level Editor's folder goes.
void ClearHalfDone(const Folders& folders);

/// Deletes what the old or the new level brought, but for files that are original. What somebody
/// changed since is kept first.
void DeleteBrought(const SwapParts& parts, const Folders& folders,
                   const std::vector<OwnedFile>& files, const LevelPlace& level, LeftInTrle& left);
/// Whatever the root and `data` of the backup hold and the folder lacks comes back. Fails before it
/// changes anything when the backup cannot be listed.
Status RestoreMissing(const Folders& folders, const PreferencesRecord& preferences,
                      const SwapJournal& journal, LeftInTrle& left);

} // namespace kestrova
