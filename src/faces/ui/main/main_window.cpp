#include "ui/main/main_window.h"

#include "app/command_table.h"
#include "app/start_up.h"
#include "archive/level_folders.h"
#include "library/level_list.h"
#include "session/operation.h"
#include "ui/desktop/file_names.h"
#include "ui/dialogs/shot_panes.h"
#include "ui/main/dropped_levels.h"
#include "ui/main/level_details.h"
#include "ui/main/level_list_pane.h"
#include "ui/main/level_menus.h"
#include "ui/main/library_keys.h"
#include "ui/main/main_menu.h"
#include "ui/main/main_tool_bar.h"
#include "ui/main/note_line.h"
#include "ui/main/play_watch.h"
#include "ui/main/savegame_windows.h"
#include "ui/main/savegames_page.h"
#include "ui/main/window_place.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/drop_area.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_main.h"
#include "words/ui_shared.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>

#include <cstdio>

namespace kestrova
{

namespace
{

constexpr int showSoonMs = 40;
constexpr int buildAgainMs = 200;
constexpr int rememberSoonMs = 1000;
/// Below that nothing in them can be reached.
constexpr QSize smallestPane{150, 110};

QString PlacesFile(const Session& session)
{
    return PathToQt(session.programFolder / OnDisk::FileNameWindowState);
}

} // namespace

MainWindow::MainWindow(Session& session, WindowLevelList& list)
    : session_(session), list_(list), commands_(session, *this),
      play_(new PlayWatch(session, *this))
{
    setObjectName(QStringLiteral("Principale"));
    showSoon_.setSingleShot(true);
    connect(&showSoon_, &QTimer::timeout, this, [this] {
        session_.running.operations == 0 ? ShowChosen() : showSoon_.start(showSoonMs);
    });
    rememberSoon_.setSingleShot(true);
    connect(&rememberSoon_, &QTimer::timeout, this, &MainWindow::RememberPlace);
    buildSoon_.setSingleShot(true);
    connect(&buildSoon_, &QTimer::timeout, this, [this] {
        if (session_.running.operations == 0 && QApplication::activeModalWidget() == nullptr)
            BuildAnew();
        else
            buildSoon_.start(buildAgainMs);
    });
    Build();
    setWindowTitle(Words(Msg::ProgramName));
    RestorePlace();
    ConnectPlay();
    WatchSavegames(session_, this, [this] { return play_->Running(); });
    list_.Show(this);
    ShowMenu();
}

void MainWindow::Build()
{
    BuildMenu(*menuBar(), [this](const CommandRow& row) { commands_.Invoke(row); });
    AddToolBar(*this);
    BuildPanes();
    BuildBar();
    ConnectList();
    ConnectShots();
    ConnectCommands();
    AddLibraryKeys(*this, *levels_);
    SetCaptions(*this);
    levels_->FocusList();
}

void MainWindow::BuildPanes()
{
    splitter_ = new QSplitter(this);
    levels_ = new LevelListPane(session_, splitter_);
    details_ = new LevelDetails(session_, splitter_);
    splitter_->setStretchFactor(0, 2);
    splitter_->setStretchFactor(1, 3);
    splitter_->setChildrenCollapsible(false);
    // Whatever stands in them, the window must fit a small screen.
    for (QWidget* pane : {static_cast<QWidget*>(levels_), static_cast<QWidget*>(details_)})
        pane->setMinimumSize(smallestPane);
    setCentralWidget(splitter_);
}

void MainWindow::BuildAnew()
{
    details_->EndTyping();
    RememberPlace();
    const auto chosen = Chosen();
    const QByteArray panes = splitter_->saveState();
    qDeleteAll(findChildren<QShortcut*>(QString{}, Qt::FindDirectChildrenOnly));
    for (QWidget* part : {static_cast<QWidget*>(splitter_), static_cast<QWidget*>(note_),
                          static_cast<QWidget*>(bar_), static_cast<QWidget*>(menuBar()),
                          findChild<QWidget*>(QStringLiteral("Bar_Tools"))})
        delete part;
    Build();
    splitter_->restoreState(panes);
    levels_->RestoreLook(QSettings{PlacesFile(session_), QSettings::IniFormat});
    RefreshList();
    if (chosen)
        Choose(*chosen);
    play_->ShowGame();
}

MainWindow::~MainWindow()
{
    list_.Show(nullptr);
}

void MainWindow::BuildBar()
{
    bar_ = new QProgressBar(this);
    note_ = new NoteLine(session_, this);
    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    bar_->setTextVisible(false);
    bar_->setFixedWidth(160);
    bar_->setRange(0, 1000);
    bar_->hide();
    connect(bar_, &QProgressBar::valueChanged, bar_,
            [this](int value) { bar_->setVisible(value > 0); });
    statusBar()->insertPermanentWidget(0, bar_);
    statusBar()->addWidget(note_, 1);
    note_->undoWanted = [this] { commands_.Invoke(*FindControl(undoCommand)); };
}

void MainWindow::ConnectList()
{
    levels_->passed = [this](std::optional<LevelCode> code) {
        const std::ptrdiff_t index = code ? FindLevel(session_.archive, *code) : -1;
        if (index >= 0)
            details_->ShowRecord(session_.archive.levels[static_cast<std::size_t>(index)]);
        else
            details_->ShowNothing();
        showSoon_.start(showSoonMs);
    };
    levels_->lookChanged = [this] { rememberSoon_.start(rememberSoonMs); };
    levels_->removalWanted = [this] { commands_.InvokeOnAll(*FindControl(removeCommand)); };
    levels_->activated = [this] { commands_.Invoke(*FindControl(playButton)); };
    levels_->menuWanted = [this](QPoint place) { ShowLevelMenu(place); };
    auto* drops = new DropArea(this, *levels_);
    drops->welcome = [this](const std::vector<Path>& paths) {
        return session_.running.operations > 0 ? QString{} : WelcomeOf(LevelsAmong(paths));
    };
    drops->dropped = [this](const std::vector<Path>& paths) {
        commands_.TakeDropped(LevelsAmong(paths));
    };
}

void MainWindow::ConnectShots()
{
    details_->Shots().zoomed = [this](std::ptrdiff_t index) { commands_.ZoomShot(index); };
    details_->Shots().menuWanted = [this](QPoint place) {
        if (session_.running.operations == 0)
            findChild<QMenu*>(QStringLiteral("mnu_Edit"))->popup(place);
    };
    details_->noteOf = [this](LevelCode code) { return levels_->NoteOf(code); };
    details_->begins = [this] { note_->Begin(); };
    details_->ends = [this] { note_->End(); };
    details_->note = [this](const std::string& text) { ShowNote(text); };
    details_->Savegames().command = [this](std::string_view control) {
        commands_.Invoke(*FindControl(control));
    };
    details_->Head().showWanted = [this] { play_->BringToFront(); };
    details_->Head().stopWanted = [this] { play_->StopGame(); };
}

void MainWindow::ConnectPlay()
{
    play_->shows = [this](const PlayNow& now) { details_->ShowPlay(now); };
    play_->says = [this](const std::string& words) { ShowNote(words); };
    play_->ended = [this] {
        note_->GameEnded();
        ShowChosen();
    };
}

void MainWindow::ConnectCommands()
{
    for (QMenu* menu : menuBar()->findChildren<QMenu*>(QString{}, Qt::FindDirectChildrenOnly))
        connect(menu, &QMenu::aboutToShow, this, &MainWindow::ShowMenu);
    for (const CommandRow& row : CommandTable()) {
        const auto invoke = [this, &row] { commands_.Invoke(row); };
        const std::string name{row.window.button};
        if (auto* button = findChild<QAbstractButton*>(ToQt(name)); button && !name.empty())
            connect(button, &QAbstractButton::clicked, this,
                    [this, &row] { commands_.Press(row); });
        if (!row.window.control.empty())
            continue; // its menu item has the keys
        for (const QKeySequence& key :
             QKeySequence::listFromString(ToQt(std::string{row.window.keys})))
            connect(new QShortcut(key, this), &QShortcut::activated, this, invoke);
    }
}

void MainWindow::ShowLevelMenu(QPoint place)
{
    if (session_.running.operations > 0)
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    FillChosenMenu(*menu, levels_->ChosenLevels(), levels_->Tags(),
                   {[this](const CommandRow& row) { commands_.Invoke(row); },
                    [this](const CommandRow& row) { commands_.InvokeOnAll(row); },
                    [this](const LevelMarks& marks) { commands_.Mark(marks); },
                    [this] { commands_.MarkWithNewTag(); }});
    menu->popup(place);
}

void MainWindow::RefreshList()
{
    bar_->setValue(0);
    setWindowTitle(!session_.archive.Loaded() ? Words(Msg::ProgramName)
                                              : ToQt(WindowTitle(session_.archive)));
    levels_->Refresh();
    ShowMenu();
    ShowChosen();
}

void MainWindow::Choose(LevelCode code)
{
    ShowMenu();
    levels_->Choose(code);
    ShowChosen();
}

std::optional<LevelCode> MainWindow::Chosen() const
{
    return levels_->Chosen();
}

void MainWindow::ShowChosen()
{
    showSoon_.stop();
    const auto chosen = levels_->Chosen();
    if (!chosen)
        details_->ShowNothing();
    else if (const auto facts = SelectLevel(session_.host, session_.Folders(), session_.archive,
                                            session_.preferences, *chosen))
        details_->ShowFacts(session_, *facts);
}

void MainWindow::ShowMenu()
{
    ShowMenuNow(*this, session_);
}

void MainWindow::ShowChosenNow()
{
    if (showSoon_.isActive())
        ShowChosen();
}

ShotPanes& MainWindow::Shots() const
{
    return details_->Shots();
}

void MainWindow::ShowActivity(const QString& text)
{
    details_->ShowActivity(text);
}

void MainWindow::ShowNote(const std::string& text)
{
    note_->Show(text);
}

void MainWindow::GameHasStarted()
{
    note_->LastsWhileTheGameRuns();
    play_->GameHasStarted();
}

void MainWindow::changeEvent(QEvent* event)
{
    // Whoever comes back from another program may have started or ended a game there.
    if (event->type() == QEvent::ActivationChange) {
        play_->LookSoon();
        commands_.TakeSettings();
    }
    // Not from inside the event, which the window's parts get too.
    if (event->type() == QEvent::LanguageChange)
        buildSoon_.start(0);
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (session_.running.operations > 0) {
        ShowNote(GetMsg(Msg::PleaseWaitToClose));
        event->ignore();
        return;
    }
    details_->EndTyping();
    if (!MayEnd(true)) {
        event->ignore();
        return;
    }
    RememberPlace();
    event->accept();
    ended();
}

bool MainWindow::MayEnd(bool mayAsk)
{
    if (!mayAsk || session_.running.operations > 0) {
        EndNow();
        return true;
    }
    const Operation operation{session_};
    return WritePreferences(session_);
}

bool MainWindow::EndNow()
{
    if (const auto written = WriteAllNow(session_); !written)
        std::fprintf(stderr, "%s\n", GetMsg(Msg::NotSavedAtEnd, {written.Error().subject}).c_str());
    RememberPlace();
    return session_.running.operations == 0 && QApplication::activeModalWidget() == nullptr;
}

void MainWindow::RememberPlace() const
{
    QSettings places(PlacesFile(session_), QSettings::IniFormat);
    RememberWindowPlace(*this, *splitter_, places);
    levels_->RememberLook(places);
}

void MainWindow::RestorePlace()
{
    const QSettings places(PlacesFile(session_), QSettings::IniFormat);
    RestoreWindowPlace(*this, *splitter_, places);
    levels_->RestoreLook(places);
}

} // namespace kestrova
