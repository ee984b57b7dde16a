#include "cli/setup_commands.h"

#include "app/start_up.h"
#include "archive/level_sizes.h"
#include "cli/file_names.h"
#include "cli/work.h"
#include "editor/find_trle.h"
#include "levels/level_life.h"
#include "levels/original_level.h"
#include "platform/places.h"
#include "platform/terminal.h"
#include "practice/practice_folder.h"
#include "swap/backup.h"
#include "words/app.h"
#include "words/cli.h"

namespace kestrova
{

namespace
{

/// Whether a backup will be made. Where nobody can tell it will not, and the attempt says why.
bool NeedsBackup(Session& session)
{
    const auto backup = LookAtBackup(session);
    if (!backup || *backup == BackupState::Missing)
        return static_cast<bool>(backup);
    const auto other = BackupOfAnotherFolder(session);
    return other && other->has_value();
}

} // namespace

Exit RunPractice(Run& run)
{
    const Path folder = PlaceFromWord(run.arguments.words.front());
    platform::NoteInterrupts(Msg::InterruptNoted.text);
    const auto progress = run.host.BeginProgress(ProgressWindow::Progress, {});
    progress->AllowStop();
    const auto made = MakePracticeFolder(
        folder, InFolder(platform::ExecutableFolder(), OnDisk::FragStandInGame),
        [&](int done, int total, const std::string& what) {
            progress->SetLabel(what);
            progress->SetBar(static_cast<std::uint64_t>(done), static_cast<std::uint64_t>(total));
            return progress->Step();
        });
    if (!made) {
        TellFailure(run.session, GetMsg(Msg::PracticeFailed), made.Error());
        return Exit::Failed;
    }
    if (!made->remark.empty())
        run.host.Tell(Tone::Warning, made->remark);
    AddLine(run, TextOf(made->trle));
    AddLine(run, TextOf(made->levels));
    return Exit::Done;
}

Exit RunSetup(Run& run)
{
    const Arguments& arguments = run.arguments;
    if (arguments.ValueOf("--trle").empty())
        return WrongUse("setup", GetMsg(Msg::WrongOptionMissing, {"--trle"}));
    if (arguments.Has("--full") && arguments.Has("--compact"))
        return WrongUse("setup", GetMsg(Msg::WrongBoth, {"--full", "--compact"}));
    if (!BeginWork(run, Needs::Nothing))
        return Exit::Failed;
    Session& session = run.session;
    TrleFinder finder{session};
    if (!finder.Take(PlaceFromWord(arguments.ValueOf("--trle"))) || !finder.Accept())
        return EndWork(run, false);
    BackupWishes wishes;
    wishes.folderIsOriginal = arguments.Has("--folder-is-original");
    if (arguments.Has("--full"))
        wishes.form = BackupForm::Full;
    else if (arguments.Has("--compact"))
        wishes.form = BackupForm::Compact;
    // Left unanswered, the question would count as a wish for the compact form.
    if (wishes.form == BackupForm::Ask && !run.host.CanAnswer() && NeedsBackup(session)) {
        run.host.NameUnanswered(GetMsg(Msg::SayBackupForm));
        return EndWork(run, false);
    }
    if (!MakeTrleBackup(session, false, wishes))
        return EndWork(run, false);
    if (!EnsureLevel0Folder(session)) {
        run.host.Tell(Tone::Error, GetMsg(Msg::ErrorLevel0));
        return EndWork(run, false);
    }
    if (session.level0Rebuilt && session.archive.Loaded())
        RefreshLevelSizes(session, originalCode);
    AddLine(run, TextOf(session.TrleFolder()));
    return EndWork(run, true);
}

Exit RunBackup(Run& run)
{
    if (!run.arguments.Has("--refresh"))
        return WrongUse("backup", GetMsg(Msg::WrongOptionMissing, {"--refresh"}));
    if (!BeginWork(run, Needs::LevelEditor))
        return Exit::Failed;
    BackupWishes wishes;
    wishes.folderIsOriginal = run.arguments.Has("--folder-is-original");
    const bool done = RefreshFullBackup(run.session, wishes);
    // Whatever form the backup has now must be known to the next run.
    const Exit ended = EndWork(run, true);
    return done ? ended : Exit::Failed;
}

} // namespace kestrova
