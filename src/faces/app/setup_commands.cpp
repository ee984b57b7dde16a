#include "app/setup_commands.h"

#include "app/disc_drives.h"
#include "app/file_names.h"
#include "app/file_types.h"
#include "app/opening.h"
#include "app/practice_library.h"
#include "app/result_text.h"
#include "app/start_up.h"
#include "archive/level_sizes.h"
#include "editor/find_trle.h"
#include "levels/original_level.h"
#include "levels/remove_level.h"
#include "session/telling.h"
#include "swap/backup.h"
#include "swap/backup_state.h"
#include "words/app.h"
#include "words/commands.h"
#include "words/file_types.h"
#include "words/menus.h"

namespace kestrova
{

namespace
{

/// Whether a backup will be made. Where nobody can tell it will not, and the attempt says why.
bool NeedsBackup(Host& host, const Folders& folders, const PreferencesRecord& preferences)
{
    const auto backup = LookAtBackup(folders);
    if (!backup || *backup == BackupState::Missing)
        return static_cast<bool>(backup);
    const auto other = BackupOfAnotherFolder(host, folders, preferences);
    return other && other->has_value();
}

bool MakePractice(Run& run)
{
    const Path folder = PlaceFromWord(run.arguments.words.front());
    HearInterrupts();
    const auto made = MakePracticeShown(run.session.host, folder);
    if (!made) {
        TellFailure(run.session.host, GetMsg(Msg::PracticeFailed), made.Error());
        return false;
    }
    if (!made->remark.empty())
        run.session.host.Tell(Tone::Warning, made->remark);
    AddLine(run, TextOf(made->trle));
    AddLine(run, TextOf(made->levels));
    AddLine(run, TextOf(made->packages));
    AddLine(run, TextOf(made->discs));
    return true;
}

bool SetUp(Run& run)
{
    const Arguments& arguments = run.arguments;
    Session& session = run.session;
    TrleFinder finder{session};
    if (!finder.Take(PlaceFromWord(arguments.ValueOf("--trle"))) || !finder.Accept())
        return false;
    BackupWishes wishes;
    wishes.folderIsOriginal = arguments.Has("--folder-is-original");
    if (arguments.Has("--full"))
        wishes.form = BackupForm::Full;
    else if (arguments.Has("--compact"))
        wishes.form = BackupForm::Compact;
    // Left unanswered, the question would count as a wish for the compact form.
    if (wishes.form == BackupForm::Ask && !run.face.CanAnswer() &&
        NeedsBackup(session.host, session.Folders(), session.preferences)) {
        run.face.NameUnanswered(GetMsg(Msg::SayBackupForm));
        return false;
    }
    if (!MakeTrleBackup(session, false, wishes))
        return false;
    const auto built = EnsureLevel0Folder(session.Folders());
    if (!built) {
        TellNoLevel0(session.host, session.Folders(), built.Error());
        return false;
    }
    if (*built && session.archive.Loaded())
        RefreshLevelSizes(session, originalCode);
    AddPracticeDrive(session.settings, session.TrleFolder());
    AddLine(run, TextOf(session.TrleFolder()));
    return true;
}

std::string WrongSetup(Run& run)
{
    if (run.arguments.ValueOf("--trle").empty())
        return GetMsg(Msg::WrongOptionMissing, {"--trle"});
    if (run.arguments.Has("--full") && run.arguments.Has("--compact"))
        return GetMsg(Msg::WrongBoth, {"--full", "--compact"});
    return {};
}

bool RefreshBackup(Run& run)
{
    BackupWishes wishes;
    wishes.folderIsOriginal = run.arguments.Has("--folder-is-original");
    const bool done = RefreshFullBackup(run.session, wishes);
    // Whatever form the backup has now must be known to the next run.
    if (!done && run.FromWords())
        (void)EndWork(run, true);
    return done;
}

std::string WrongBackup(Run& run)
{
    return run.arguments.Has("--refresh") ? std::string{}
                                          : GetMsg(Msg::WrongOptionMissing, {"--refresh"});
}

bool TellFileTypes(Run& run)
{
    bool anew = false;
    const auto written = RegisterFileTypes(run.session, anew);
    if (!written) {
        TellFailure(run.session.host, GetMsg(Msg::FileTypesFailed), written.Error());
        return false;
    }
    for (const Path& file : *written)
        AddLine(run, TextOf(file));
    if (!anew)
        run.session.host.Tell(Tone::Plain, GetMsg(Msg::FileTypesNoTools));
    return true;
}

} // namespace

std::span<const CommandRow> SetupCommands()
{
    static const CommandRow rows[] = {
        {.terminal = {.word = "practice",
                      .usage = Msg::UsePractice,
                      .summary = Msg::SumPractice,
                      .leastWords = 1,
                      .mostWords = 1},
         .touches = Touches::ItsOwn,
         .run = MakePractice},
        {.terminal = {.word = "setup",
                      .usage = Msg::UseSetup,
                      .summary = Msg::SumSetup,
                      .options = {PlaceOption("--trle"), FlagOption("--full"),
                                  FlagOption("--compact"), FlagOption("--folder-is-original")},
                      .wrong = WrongSetup},
         .touches = Touches::Stores,
         .run = SetUp},
        {.window = {.control = "mnu_InstallTrleFolder",
                    .caption = Msg::MenuInstallTrleFolder,
                    .menu = "mnu_InstallTrle"},
         .help = HelpTag::InstallTrle},
        {.window = {.control = "mnu_InstallComprTrle",
                    .caption = Msg::MenuInstallCompressed,
                    .menu = "mnu_InstallTrle"},
         .help = HelpTag::InstallTrle},
        {.terminal = {.word = "file-types",
                      .usage = Msg::UseFileTypes,
                      .summary = Msg::SumFileTypes},
         .run = TellFileTypes,
         .help = HelpTag::Beginning},
        {.window = {.control = "mnu_FaiFullBackup",
                    .caption = Msg::MenuFullBackup,
                    .menu = "mnu_Manutenzione",
                    .behind = "mnu_CreaInfoTr4"},
         .terminal = {.word = "backup",
                      .usage = Msg::UseBackup,
                      .summary = Msg::SumBackup,
                      .options = {FlagOption("--refresh"), FlagOption("--folder-is-original")},
                      .wrong = WrongBackup},
         .needs = Needs::LevelEditor,
         .touches = Touches::Stores,
         .run = RefreshBackup,
         .help = HelpTag::Backup},
    };
    return rows;
}

} // namespace kestrova
