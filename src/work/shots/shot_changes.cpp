#include "shots/shot_changes.h"

#include "archive/level_sizes.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "history/changes.h"
#include "words/shots.h"

namespace kestrova
{

Change ShotChange(const ChangeParts& parts, ChangeKind kind, LevelCode code,
                  const std::string& subject)
{
    Change change = NewChange(parts, kind, code);
    change.subject = subject;
    change.reason =
        Told(kind == ChangeKind::ShotDeleted ? Msg::ReasonShotDeleted : Msg::ReasonShotReplaced);
    return change;
}

Status MakeShotChange(const ChangeParts& parts, const Change& change)
{
    if (auto status = MakeChange(parts, change); !status)
        return status;
    // It is made: what cannot be noted of it now is ended by the next change, or the next start.
    (void)EndChange(parts.folders, parts.settings, change);
    return {};
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

namespace
{

/// A captured picture is counted, whatever it replaces.
void CountNew(Change& change, const Path& picture)
{
    if (change.kind == ChangeKind::ShotCaptured)
        change.extraBytes = SizeField(static_cast<double>(FileSize(picture)));
}

} // namespace

Status WriteShot(const ChangeParts& parts, Change change, const Path& place,
                 const std::function<Status(const Path&)>& write)
{
    const Path old = ResolvePath(place);
    const auto isFree = IsFree(old);
    if (!isFree)
        return isFree.Error();
    if (*isFree) {
        if (auto status = write(place); !status)
            return status;
        CountNew(change, place);
        NoteNewShots(parts.folders, parts.settings, std::move(change), {place});
        return {};
    }
    const StagedPlace drawn{parts.folders.program / old.filename()};
    if (auto status = write(drawn.Staged()); !status)
        return status;
    auto replaced = FilesThatGo(old.parent_path(), {old});
    const auto hash = HashIfThere(drawn.Staged());
    if (!replaced || !hash)
        return replaced ? hash.Error() : replaced.Error();
    if (*hash == replaced->before.front().hash)
        return {};
    replaced->after = {{old.filename().native(), *hash, drawn.Staged().native()}};
    CountNew(change, drawn.Staged());
    change.kind = ChangeKind::ShotReplaced;
    change.folders = {std::move(replaced).Value()};
    return MakeShotChange(parts, change);
}

} // namespace kestrova
