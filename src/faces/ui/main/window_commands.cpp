#include "ui/main/window_commands.h"

#include "app/command_table.h"
#include "app/init_program.h"
#include "app/run_command.h"
#include "app/run_on_several.h"
#include "app/start_up.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "editor/find_trle.h"
#include "intake/edit_level.h"
#include "intake/queue_texts.h"
#include "online/config_database.h"
#include "platform/real_path.h"
#include "play/savegame_tool.h"
#include "session/operation.h"
#include "shots/shot_commands.h"
#include "ui/dialogs/dialog_add_many.h"
#include "ui/dialogs/dialog_add_wads.h"
#include "ui/dialogs/dialog_author.h"
#include "ui/dialogs/dialog_compare_trle.h"
#include "ui/dialogs/dialog_convert_audio.h"
#include "ui/dialogs/dialog_doctor.h"
#include "ui/dialogs/dialog_import_shot.h"
#include "ui/dialogs/dialog_installa_trle.h"
#include "ui/dialogs/dialog_muovi_su_cd.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/dialogs/dialog_pref_arc.h"
#include "ui/dialogs/dialog_resize.h"
#include "ui/dialogs/dialog_restore.h"
#include "ui/dialogs/dialog_screen_shot.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/dialogs/dialog_wizard.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/dialogs/shot_panes.h"
#include "ui/main/dropped_levels.h"
#include "ui/main/level_details.h"
#include "ui/main/level_list_pane.h"
#include "ui/main/main_window.h"
#include "ui/main/note_line.h"
#include "ui/main/play_watch.h"
#include "ui/main/savegame_windows.h"
#include "ui/main/start_windows.h"
#include "words/add_many.h"
#include "words/levels.h"
#include "words/library_window.h"
#include "words/ui_main.h"

#include <algorithm>

namespace kestrova
{

const WindowCommands::Opens WindowCommands::windows[] = {
    {"mnu_AddLevel", [](WindowCommands& at) { at.AddLevelFrom({}); }},
    {"mnu_AddMany", [](WindowCommands& at) { at.AddManyFrom({}); }},
    {"mnu_Property", [](WindowCommands& at) { at.EditChosen(); }},
    {"Pul_AutoreInfo", [](WindowCommands& at) { at.ShowAuthor(); }},
    {"mnu_ImportSavegame",
     [](WindowCommands& at) { ShowSavegameImport(at.session_, &at.window_); }},
    {"mnu_ExportSavegame",
     [](WindowCommands& at) { ShowSavegames(at.session_, ListPurpose::Export, &at.window_); }},
    {"mnu_SendSaveGameEmail",
     [](WindowCommands& at) { ShowSavegames(at.session_, ListPurpose::Mail, &at.window_); }},
    {"mnu_SavegameHistory",
     [](WindowCommands& at) { ShowSavegameHistory(at.session_, &at.window_); }},
    {"mnu_CopyScreenShots", [](WindowCommands& at) { at.ImportShotsOfStore(); }},
    {"mnu_ResizeSave", [](WindowCommands& at) { at.ResizeShot(); }},
    {"mnu_DecodeMp3",
     [](WindowCommands& at) { ShowAudioTool(at.session_, AudioToolMode::Decode, &at.window_); }},
    {"mnu_EncodeMp3",
     [](WindowCommands& at) { ShowAudioTool(at.session_, AudioToolMode::Encode, &at.window_); }},
    {"mnu_ConvertWav",
     [](WindowCommands& at) { ShowAudioTool(at.session_, AudioToolMode::Convert, &at.window_); }},
    {"mnu_ShowListaUrl",
     [](WindowCommands& at) { ShowUrls(at.session_, UrlKindLevels, &at.window_); }},
    {"mnu_ShowUrlList",
     [](WindowCommands& at) { ShowUrls(at.session_, UrlKindForums, &at.window_); }},
    {"mnu_SetOriginale",
     [](WindowCommands& at) { RestoreDialog(at.session_, &at.window_).exec(); }},
    {"mnu_SetupUpload", [](WindowCommands& at) { ShowWizard(at.session_, &at.window_); }},
    {"mnu_Settings", [](WindowCommands& at) { SettingsDialog(at.session_, &at.window_).exec(); }},
    {"mnu_PrefArchive", [](WindowCommands& at) { at.EditArchivePreferences(); }},
    {"mnu_FindHelp", [](WindowCommands& at) { at.ShowHelp("mnu_FindHelp"); }},
    {"mnu_HelpSaveGameMan", [](WindowCommands& at) { at.ShowHelp("mnu_HelpSaveGameMan"); }},
    {"mnu_HelpFaq", [](WindowCommands& at) { at.ShowHelp("mnu_HelpFaq"); }},
    {"mnu_CompareTrle",
     [](WindowCommands& at) { CompareTrleDialog(at.session_, &at.window_).exec(); }},
    {"mnu_Doctor", [](WindowCommands& at) { DoctorDialog(at.session_, &at.window_).exec(); }},
    {"mnu_InstallTrleFolder", [](WindowCommands& at) { at.SetUpEditor(SetupFrom::Folder); }},
    {"mnu_InstallComprTrle", [](WindowCommands& at) { at.SetUpEditor(SetupFrom::Zips); }},
    {"mnu_MoveOnCd", [](WindowCommands& at) { ShowDiscs(at.session_, &at.window_); }},
    {"mnu_ImportWads", [](WindowCommands& at) { ShowAddWads(at.session_, &at.window_); }},
    {"mnu_About", [](WindowCommands& at) { AboutDialog(&at.window_).exec(); }},
};

void WindowCommands::Invoke(const CommandRow& row)
{
    if (row.window.control == exitCommand)
        window_.close(); // which says why when it cannot
    else
        Do([&] { RunOrShow(row); });
}

void WindowCommands::Do(const std::function<void()>& work)
{
    if (session_.running.operations > 0)
        return;
    window_.ShowChosenNow(); // nothing of another level stands beside a question
    window_.Notes().Begin();
    window_.Levels().KeepPlace(true);
    work();
    window_.Levels().KeepPlace(false);
    window_.Notes().End();
    window_.ShowMenu();
    preferences_.Keep();
}

void WindowCommands::Press(const CommandRow& row)
{
    if (row.window.button == savegamesButton && !HasSavegameTool(session_.Folders()))
        window_.Details().OpenSavegames();
    else
        Invoke(row);
}

void WindowCommands::RunOrShow(const CommandRow& row)
{
    for (const Opens& own : windows)
        if (own.command == row.window.control || own.command == row.window.button)
            return own.show(*this);
    shotsTaken_ = false;
    const bool plays = row.window.button == playButton;
    if (const auto chosen = window_.Chosen(); plays && chosen)
        window_.Play().PlayBegins(*chosen);
    RunOnChosen(row, session_, *this);
    if (plays)
        window_.Play().PlayEnds();
    if (shotsTaken_)
        window_.Shots().ShowPair();
}

void WindowCommands::InvokeOnAll(const CommandRow& row)
{
    const std::vector<LevelCode> levels = window_.Levels().ChosenAll();
    if (row.several.question == Message{} || levels.size() < 2)
        return Invoke(row);
    Do([&] { RunOnSeveral(row, session_, *this, levels); });
}

void WindowCommands::Mark(const LevelMarks& marks)
{
    Do([&] {
        const Operation operation{session_};
        MarkLevels(session_, window_.Levels().ChosenAll(), marks);
    });
}

void WindowCommands::MarkWithNewTag()
{
    std::optional<std::string> tag;
    {
        const Operation operation{session_};
        tag = session_.host.AskText(GetMsg(Msg::AskNewTag), {});
    }
    if (!tag || Trim(*tag).empty())
        return;
    LevelMarks marks;
    marks.addTags = {std::string{Trim(*tag)}};
    Mark(marks);
}

void WindowCommands::Note(const std::string& text)
{
    window_.ShowNote(text);
}

ShotList* WindowCommands::Shots()
{
    if (!window_.Chosen())
        return nullptr;
    window_.ShowChosenNow(); // the panes are those of the level that is chosen now
    shotsTaken_ = true;
    return &window_.Shots().List();
}

void WindowCommands::GameStarted()
{
    window_.GameHasStarted();
}

bool WindowCommands::AsksForDatabaseUpdate()
{
    const Operation operation{session_};
    return WantsDatabaseUpdate(session_.host, session_.machine, session_.Folders());
}

void WindowCommands::AddLevelFrom(const std::vector<Path>& sources)
{
    if (session_.running.operations > 0)
        return;
    window_.Notes().Begin();
    const std::vector<QueueSource> levels = SourcesOfLevels(sources);
    const YesNoCancel each =
        levels.size() < 2 ? YesNoCancel::No : AskForEach(session_, sources, levels.size());
    if (each == YesNoCancel::Yes)
        return AddManyFrom(levels);
    if (each == YesNoCancel::No && MayAdd())
        AddAlone(sources, &window_);
}

void WindowCommands::TakeDropped(std::vector<Path> paths)
{
    if (session_.running.operations > 0)
        return;
    const std::vector<Path> archives = TakeArchives(paths);
    const bool alone = archives.size() == 1 && paths.empty();
    if (alone) {
        OpenArchive(archives.front());
    } else if (!archives.empty()) {
        const Operation operation{session_};
        session_.host.Tell(Tone::Warning, GetMsg(Msg::DroppedArchives, {NamesOf(archives)}));
    }
    if (!paths.empty())
        AddLevelFrom(paths);
    preferences_.Keep();
}

bool WindowCommands::MayAdd()
{
    if (AsksForDatabaseUpdate())
        ShowUrls(session_, UrlKindLevels, &window_, true);
    return HasArchive(session_.host, session_.archive);
}

std::optional<LevelCode> WindowCommands::AddAlone(const std::vector<Path>& sources, QWidget* over)
{
    NewLevelDialog dialog{session_, over};
    LevelCode code = 0;
    if (!AddLevel(
            session_, dialog.Progress(), [&](Intake& level) { return dialog.Show(level, sources); },
            code))
        return {};
    window_.Levels().Reveal(code);
    window_.ShowChosen();
    Note(GetMsg(Msg::LevelAdded, {LevelNameOf(session_.archive, code)}));
    return code;
}

void WindowCommands::AddManyFrom(const std::vector<QueueSource>& sources)
{
    if (session_.running.operations > 0 || !MayAdd())
        return;
    AddManyDialog dialog{
        session_, [this](const Path& source, QWidget* over) { return AddAlone({source}, over); },
        &window_};
    dialog.Show(sources);
    if (dialog.Queue().End() != QueueEnd::None)
        Note(GetMsg(Msg::ManyNote, {CountsText(dialog.Queue())}));
}

void WindowCommands::OpenFiles(const std::vector<std::string>& items)
{
    if (session_.running.operations > 0)
        return;
    const CommandLine named = ParseCommandLine(items);
    if (!named.trle.empty()) {
        const bool kept = [this] {
            const Operation operation{session_};
            return WritePreferences(session_);
        }();
        if (!kept)
            return;
        StartAnew(items);
    } else if (!named.archive.empty()) {
        OpenArchive(named.archive);
    }
    if (!named.others.empty())
        AddLevelFrom(named.others);
    preferences_.Keep();
}

void WindowCommands::OpenArchive(const Path& file)
{
    if (session_.archive.Loaded() && platform::IsSameFile(session_.ArchivePath(), file))
        return;
    const CommandRow& row = *FindCommand("load");
    const Arguments words{std::string{row.terminal.word}, {file.native()}, {}, {}};
    const Operation operation{session_};
    Run run{session_, *this, words};
    row.run(run);
}

void WindowCommands::ZoomShot(std::ptrdiff_t index)
{
    if (session_.running.operations == 0 && window_.Chosen())
        ScreenShotDialog(window_.Shots().List(), index, &window_).exec();
}

void WindowCommands::ShowHelp(std::string_view command)
{
    if (HelpDesk* help = HelpDesk::Current())
        help->Show(HelpTagOf(command), &window_);
}

void WindowCommands::EditChosen()
{
    const auto chosen = window_.Chosen();
    if (!chosen)
        return session_.host.Tell(Tone::Error, GetMsg(Msg::NoLevelSelected));
    NewLevelDialog dialog{session_, &window_};
    EditLevel(session_, dialog.Progress(), *chosen,
              [&](Intake& level) { return dialog.Show(level); });
}

void WindowCommands::EditArchivePreferences()
{
    if (HasArchive(session_.host, session_.archive))
        ArchiveDialog(session_, &window_).exec();
}

void WindowCommands::SetUpEditor(SetupFrom from)
{
    const auto installed = ShowSetup(session_, from, &window_);
    if (!installed)
        return;
    {
        const Operation operation{session_};
        TrleFinder finder{session_};
        if (!finder.Take(*installed) || !finder.Accept() || !WritePreferences(session_))
            return;
    }
    StartAnew({}); // with the new folder
}

void WindowCommands::StartAnew(const std::vector<std::string>& items)
{
    StartDialogs dialogs;
    InitProgram(session_, dialogs, items);
    window_.RefreshList();
}

std::optional<std::size_t> WindowCommands::ChosenPlace() const
{
    const auto chosen = window_.Chosen();
    const std::ptrdiff_t index = chosen ? FindLevel(session_.archive, *chosen) : -1;
    return index >= 0 ? std::optional{static_cast<std::size_t>(index)} : std::nullopt;
}

void WindowCommands::ShowAuthor()
{
    if (const auto place = ChosenPlace())
        AuthorDialog(session_, *place, &window_).exec();
}

void WindowCommands::ImportShotsOfStore()
{
    const auto place = ChosenPlace();
    if (place && ImportShotDialog(session_, *place, &window_).exec() == QDialog::Accepted)
        window_.ShowChosen();
}

void WindowCommands::ResizeShot()
{
    std::optional<Path> shot;
    {
        const Operation operation{session_};
        if (ShotList* shots = Shots())
            shot = ShotToResize(session_.host, *shots);
    }
    if (shot && ResizeDialog(session_, *shot, &window_).exec() == QDialog::Accepted)
        window_.ShowChosen();
}

} // namespace kestrova
