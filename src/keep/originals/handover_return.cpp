#include "originals/handover_return.h"

#include "core/removal.h"
#include "formats/program_folder.h"
#include "history/players_files.h"
#include "history/work_note.h"
#include "originals/tree_return.h"

namespace kestrova
{

namespace
{

/// All of it is in its place; only then the note goes.
Status EndHandover(const Folders& folders, const LoanNote& note)
{
    if (note.phase != LoanPhase::Planned)
        if (const auto failure = platform::SyncFileSystem(folders.trle))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(folders.trle), failure);
    (void)ClearPlace(KeptCopyOf(folders, 0).parent_path()); // of no use any more
    return StatusOf(DropWorkNote(LoanNotePath(folders)));
}

} // namespace

Path KeptCopyOf(const Folders& folders, std::size_t file)
{
    return InFolder(folders.program, OnDisk::DirHanded) / std::to_string(file);
}

Status ReturnHandover(Machine& machine, const Folders& folders, const LoanNote& note, LoanEnd end,
                      const std::set<Path>& stays)
{
    if (note.phase == LoanPhase::Planned) // nobody has been in the folder
        return EndHandover(folders, note);
    // The game may have been played since the run that was killed.
    const bool isLate = end == LoanEnd::Recovered;
    const auto mayChange = [&](const Path& name) { return isLate && IsPlayersPlace(name); };
    const auto back =
        BringTreeBack(machine, folders,
                      {*note.whole, [&](std::size_t file) { return KeptCopyOf(folders, file); },
                       [&](const Path& name) { return stays.contains(name) || mayChange(name); },
                       mayChange, isLate, true});
    return back ? EndHandover(folders, note) : StatusOf(back);
}

} // namespace kestrova
