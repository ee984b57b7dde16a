#include "shots/shot_changes.h"

#include "history/changes.h"
#include "words/shots.h"

namespace kestrova
{

Change ShotChange(Machine& machine, const Folders& folders, const Archive& archive,
                  const ProgramSettings& settings, ChangeKind kind, LevelCode code,
                  const std::string& subject)
{
    Change change = NewChange(machine, folders, archive, settings, kind, code);
    change.subject = subject;
    change.reason =
        GetMsg(kind == ChangeKind::ShotDeleted ? Msg::ReasonShotDeleted : Msg::ReasonShotReplaced);
    return change;
}

Status MakeShotChange(Machine& machine, const Folders& folders, const Archive& archive,
                      const ProgramSettings& settings, const Change& change)
{
    if (auto status = MakeChange(machine, folders, archive, settings, change); !status)
        return status;
    return EndChange(folders, settings, change);
}

void NoteNewShots(const Folders& folders, const ProgramSettings& settings, Change change,
                  const std::vector<Path>& files)
{
    if (files.empty())
        return;
    auto came = FilesThatCame(files.front().parent_path(), files);
    if (!came)
        return; // there is no way back then
    change.folders = {std::move(came).Value()};
    NoteDone(folders, settings, change);
}

} // namespace kestrova
