#include "intake/player_files.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/history.h"
#include "session/telling.h"
#include "words/intake.h"

namespace kestrova
{

namespace
{

CopyOptions Safely(ProgressScope& progress)
{
    CopyOptions options;
    options.verify = Verify::Content;
    options.flush = true;
    options.spelled = true;
    options.progress = [&](std::uint64_t) { return progress.Step(); };
    return options;
}

enum class Held { Nothing, Same, Other };

/// What stands where `file` is to go.
Result<Held> HeldAt(const Path& target, const Path& file)
{
    const auto facts = LookAtSpelled(target);
    if (!facts)
        return facts.Error();
    if (facts->kind != platform::FileKind::File)
        return Held::Nothing;
    return SameContent(file, target) ? Held::Same : Held::Other;
}

StepAnswer Failed(Intake& intake, Message words, const Failure& failure)
{
    if (failure.code == ErrorCode::Stopped)
        return StepAnswer::Stopped;
    TellFailure(intake.session.host, GetMsg(words), failure);
    return StepAnswer::Refused;
}

StepAnswer NotRead(Intake& intake, const Failure& failure)
{
    TellFolderNotRead(intake.session.host, failure);
    return StepAnswer::Refused;
}

StepAnswer TakeSavegame(Intake& intake, const Path& file, const Path& target)
{
    LevelDraft& draft = intake.draft;
    if (!intake.progress.Step())
        return StepAnswer::Stopped;
    const auto held = HeldAt(target, file);
    if (!held)
        return Failed(intake, Msg::IncomingNotCopied, held.Error());
    const bool other = *held == Held::Other;
    const bool taken = !other || ConfirmReplace(intake.session.host, file, target);
    // Whichever of two different savegames goes, it can be brought back.
    if (other)
        if (const auto kept = KeepInHistory(intake.session.machine, intake.session.Folders(),
                                            intake.session.settings, draft.record.levelCode,
                                            {taken ? target : file},
                                            Told(taken ? Msg::ReasonReplaced : Msg::ReasonRefused));
            !kept)
            return Failed(intake, Msg::IncomingNotKept, kept.Error());
    if (taken && draft.before)
        if (const auto kept = draft.before->KeepTarget(target, file); !kept)
            return Failed(intake, Msg::IncomingNotKept, kept.Error());
    if (taken)
        if (const auto copied = CopyFileOver(file, target, Safely(intake.progress)); !copied)
            return Failed(intake, Msg::IncomingNotCopied, copied.Error());
    return StepAnswer::GoesOn;
}

Status TakePicture(Intake& intake, const Path& file, const Path& target)
{
    LevelDraft& draft = intake.draft;
    const auto held = HeldAt(target, file);
    if (!held)
        return held.Error();
    if (!intake.progress.Step())
        return MakeFailure(ErrorCode::Stopped, TextOf(file));
    if (*held == Held::Same)
        return {};
    if (*held == Held::Other)
        if (auto kept = KeepInHistory(intake.session.machine, intake.session.Folders(),
                                      intake.session.settings, draft.record.levelCode, {target},
                                      Told(Msg::ReasonReplaced));
            !kept)
            return kept;
    if (draft.before)
        if (auto kept = draft.before->KeepTarget(target, file); !kept)
            return kept;
    return CopyFileOver(file, target, Safely(intake.progress));
}

} // namespace

StepAnswer TakeSavegames(Intake& intake)
{
    intake.progress.AllowStop();
    const Path& folder = intake.draft.workFolder;
    const auto savegames = ListFiles(folder, OnDisk::SavegamePattern);
    if (!savegames)
        return NotRead(intake, savegames.Error());
    if (savegames->empty())
        return StepAnswer::GoesOn;
    const Path store = StateStoreOf(intake.session.Folders(), intake.draft.record.levelCode);
    FolderNames names{store};
    if (!names.State())
        return Failed(intake, Msg::IncomingNotCopied, names.State().Error());
    for (const Path& file : *savegames) {
        const Path target = names.PathOf(file.filename().native());
        if (const auto answer = TakeSavegame(intake, file, target); answer != StepAnswer::GoesOn)
            return answer;
        names.Add(target.filename().native());
    }
    if (const auto flushed = FlushFolder(store); !flushed)
        return Failed(intake, Msg::IncomingNotCopied, flushed.Error());
    if (const auto deleted = DeleteMatching(folder, OnDisk::SavegamePattern); !deleted)
        return Failed(intake, Msg::IncomingNotCopied, deleted.Error());
    return StepAnswer::GoesOn;
}

StepAnswer TakeScreenshots(Intake& intake)
{
    const Path shots =
        InFolder(LevelHomeOf(intake.session.Folders(), intake.draft.record.levelCode),
                 OnDisk::DirScreenshots);
    FolderNames names{shots};
    if (!names.State())
        return NotRead(intake, names.State().Error());
    for (const std::string& pattern : Split(OnDisk::PicturePatterns, '|')) {
        const auto pictures = ListFiles(intake.draft.workFolder, pattern);
        if (!pictures)
            return NotRead(intake, pictures.Error());
        for (const Path& file : *pictures) {
            const Path target = names.PathOf(file.filename().native());
            if (const auto taken = TakePicture(intake, file, target); !taken)
                return Failed(intake, Msg::IncomingNotCopied, taken.Error());
            names.Add(target.filename().native());
        }
    }
    return StepAnswer::GoesOn;
}

} // namespace kestrova
