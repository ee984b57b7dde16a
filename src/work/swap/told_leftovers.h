#pragma once

#include "formats/swap_journal.h"
#include "swap/swap_parts.h"

/// What a told failure left in the Level Editor's folder, cleared as soon as that can be done.
namespace kestrova
{

/// Without a marker the folder is original; what a told failure left in it is cleared as soon as
/// the disk allows it.
void ClearToldLeftovers(const SwapParts& parts);
/// Whether a level's file that the record still lists is to go: it stands there, and not the
/// original in its place, and it is no sound of a compact backup.
bool ShouldGo(const Folders& folders, const PreferencesRecord& preferences, const OwnedFile& file);

} // namespace kestrova
