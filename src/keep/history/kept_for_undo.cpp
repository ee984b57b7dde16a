#include "history/kept_for_undo.h"

#include "core/copying.h"
#include "core/look.h"
#include "history/history.h"

namespace kestrova
{

void KeepForUndo(const Folders& folders, const Change& change, const ChangeTarget& target)
{
    if (change.kept.empty())
        return;
    const Path inHistory = HistoryContent(folders, target.was);
    const Path kept = Path{change.kept} / target.was;
    if (!MakeFolders(kept.parent_path()) || IsFile(kept).ValueOr(false))
        return;
    // The game may write into its own file; what is in the history stays as it is.
    if (Holds(inHistory, target.was) && !platform::HardLink(inHistory, kept))
        return;
    if (CopyFileOver(target.file, kept) && !Holds(kept, target.was))
        (void)platform::Unlink(kept); // it has changed just now
}

} // namespace kestrova
