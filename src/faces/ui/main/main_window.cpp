#include "ui/main/main_window.h"

#include "app/start_up.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "history/standing.h"
#include "levels/level_language.h"
#include "swap/backup.h"
#include "ui/desktop/file_names.h"
#include "ui/dialogs/dialog_convert_audio.h"
#include "ui/dialogs/dialog_new_level.h"
#include "ui/dialogs/dialog_restore.h"
#include "ui/dialogs/dialog_settings.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/main/level_details.h"
#include "ui/main/main_menu.h"
#include "ui/main/savegame_commands.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"
#include "upkeep/archive_life.h"
#include "upkeep/archive_sizes.h"
#include "upkeep/copy_more_info.h"
#include "upkeep/create_tr4_infos.h"
#include "upkeep/equal_check.h"
#include "words/ui_main.h"
#include "words/ui_shared.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QProgressBar>
#include <QSettings>
#include <QShortcut>
#include <QSocketNotifier>
#include <QSplitter>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <cstdio>

namespace kestrova
{

namespace
{

constexpr int showSoonMs = 40;
constexpr QSize firstSize{1000, 640};

} // namespace

void WindowLevelList::Refresh()
{
    if (window_ != nullptr)
        window_->RefreshList();
}

void WindowLevelList::Select(LevelCode code)
{
    if (window_ != nullptr)
        window_->Choose(code);
}

std::optional<LevelCode> WindowLevelList::Selected() const
{
    return window_ == nullptr ? std::nullopt : window_->Chosen();
}

void WindowLevelList::ShowActivity(const std::string& text)
{
    if (window_ != nullptr)
        window_->ShowActivity(ToQt(text));
}

MainWindow::MainWindow(Session& session, WindowLevelList& list)
    : session_(session), list_(list), model_(new LevelModel(this)), splitter_(new QSplitter(this)),
      details_(new LevelDetails(splitter_)), bar_(new QProgressBar(this))
{
    setObjectName(QStringLiteral("Principale"));
    setAcceptDrops(true);
    const auto run = [this](auto work) { return [this, work] { Run(work); }; };
    BuildMenu(*menuBar(),
              {Commands{{"mnu_New", run([this] { NewArchive(); })},
                        {"mnu_Load", run([this] { AskLoadArchive(session_); })},
                        {"mnu_Save", run([this] { SaveCurrentArchive(); })},
                        {"mnu_SaveAs", run([this] { AskSaveArchiveAs(session_); })},
                        {"Mnu_Exit", [this] { close(); }},
                        {"mnu_AddLevel", [this] { AddLevelFrom({}); }},
                        {"mnu_Property", [this] { EditChosen(); }},
                        {"mnu_RemoveLevel", run([this] { RemoveChosen(); })},
                        {"mnu_CalcolaSize", run([this] { ShowArchiveSizes(session_); })},
                        {"mnu_SetMylanguage",
                         run([this] { ChangeLanguageOfSelected(session_, LanguageChange::Mine); })},
                        {"mnu_RestoreLanguage", run([this] {
                             ChangeLanguageOfSelected(session_, LanguageChange::Original);
                         })},
                        {"mnu_SetLanguageAll",
                         run([this] { ChangeLanguageOfAll(session_, LanguageChange::Mine); })},
                        {"mnu_RestoreAll",
                         run([this] { ChangeLanguageOfAll(session_, LanguageChange::Original); })},
                        {"mnu_Export", run([this] { ExportChosen(); })},
                        {"mnu_ControllaUguali", run([this] { CheckEqualLevels(session_); })},
                        {"mnu_CopiaFileInfos", run([this] { CopyMoreInfoFiles(session_); })},
                        {"mnu_CreaInfoTr4", run([this] { CreateTr4Infos(session_); })},
                        {"mnu_FaiFullBackup", run([this] { RefreshFullBackup(session_); })},
                        {"mnu_SetOriginale", [this] { RestoreDialog(session_, this).exec(); }},
                        {"mnu_Settings", [this] { SettingsDialog(session_, this).exec(); }},
                        {"mnu_PrefArchive", [this] { EditArchivePreferences(); }},
                        {"mnu_About", [this] { AboutDialog(this).exec(); }}},
               ShotCommands(), SavegameCommands(session_, this), AudioCommands(session_, this)});

    auto* side = new QWidget;
    BuildList(*side);
    splitter_->insertWidget(0, side);
    splitter_->setStretchFactor(0, 2);
    splitter_->setStretchFactor(1, 3);
    splitter_->setChildrenCollapsible(false);
    setCentralWidget(splitter_);

    bar_->setObjectName(QStringLiteral("ProgressBar1"));
    bar_->setTextVisible(false);
    bar_->setFixedWidth(160);
    bar_->setRange(0, 1000);
    bar_->hide();
    connect(bar_, &QProgressBar::valueChanged, bar_,
            [this](int value) { bar_->setVisible(value > 0); });
    statusBar()->addPermanentWidget(bar_);

    showSoon_.setSingleShot(true);
    connect(&showSoon_, &QTimer::timeout, this, [this] {
        if (session_.runningOperations == 0)
            ShowChosen();
        else
            showSoon_.start(showSoonMs);
    });
    ConnectList();
    ConnectShots();
    WatchPlay();
    BuildKeys();
    SetCaptions(*this);
    setWindowTitle(Words(Msg::ProgramName));
    RestorePlace();
    WatchSavegames(session_, this, [this] { return gameWatch_.Running(); });
    view_->setFocus();
    list_.Show(this);
}

MainWindow::~MainWindow()
{
    list_.Show(nullptr);
}

void MainWindow::BuildList(QWidget& side)
{
    side.setObjectName(QStringLiteral("Frame_Livelli"));
    search_ = new QLineEdit(&side);
    search_->setObjectName(QStringLiteral("Text_Search"));
    search_->setPlaceholderText(Words(Msg::SearchHint));
    search_->setAccessibleName(Words(Msg::SearchName));
    search_->setClearButtonEnabled(true);
    const auto button = [&side](const char* name, Drawing drawing, bool pictured) {
        auto* made = new QToolButton(&side);
        made->setObjectName(QString::fromLatin1(name));
        made->setIcon(DrawnIcon(drawing));
        made->setProperty("pictured", pictured);
        made->setToolButtonStyle(pictured ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
        made->setFocusPolicy(Qt::TabFocus);
        return made;
    };
    auto* find = button("Pul_Search", Drawing::Search, true);
    auto* before = button("Pul_Prima", Drawing::Previous, false);
    auto* behind = button("Pul_Dopo", Drawing::Next, false);
    before->setToolTip(Words(Msg::PreviousLevelTip));
    behind->setToolTip(Words(Msg::NextLevelTip));
    connect(find, &QToolButton::clicked, this, &MainWindow::SearchFirst);
    connect(before, &QToolButton::clicked, this, [this] { SearchOn(-1); });
    connect(behind, &QToolButton::clicked, this, [this] { SearchOn(1); });

    view_ = new QListView(&side);
    view_->setObjectName(QStringLiteral("Combo_Livelli"));
    view_->setAccessibleName(Words(Msg::LevelsListName));
    view_->setUniformItemSizes(true);
    view_->setTextElideMode(Qt::ElideRight);
    view_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setItemDelegate(new LevelDelegate(view_));
    view_->setModel(model_);
    // In the list's own room, so that it does not change its size.
    empty_ = new QLabel(view_->viewport());
    (new QVBoxLayout(view_->viewport()))->addWidget(empty_);
    empty_->setAttribute(Qt::WA_TransparentForMouseEvents);
    empty_->setObjectName(QStringLiteral("Label_Empty"));
    empty_->setTextFormat(Qt::PlainText);
    empty_->setWordWrap(true);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setMargin(12);
    empty_->setForegroundRole(QPalette::PlaceholderText);
    counts_ = new QLabel(&side);
    counts_->setObjectName(QStringLiteral("Label_Counts"));

    auto* top = new QHBoxLayout;
    top->addWidget(search_, 1);
    top->addWidget(find);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(before);
    bottom->addWidget(behind);
    bottom->addStretch();
    bottom->addWidget(counts_);
    auto* column = new QVBoxLayout(&side);
    column->setContentsMargins(4, 4, 4, 4);
    column->addLayout(top);
    column->addWidget(view_, 1);
    column->addLayout(bottom);
    QWidget* const order[] = {search_, find, view_, before, behind};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void MainWindow::ConnectList()
{
    connect(search_, &QLineEdit::textChanged, this, &MainWindow::SearchTyped);
    connect(search_, &QLineEdit::returnPressed, this, &MainWindow::SearchFirst);
    search_->installEventFilter(this);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &MainWindow::RowChosen);
    connect(view_, &QListView::activated, this, [this] { Play(); });
    connect(details_->PlayButton(), &QPushButton::clicked, this, &MainWindow::Play);
    connect(details_->MoreInfoButton(), &QPushButton::clicked, this, &MainWindow::MoreInfo);
    connect(details_->AuthorButton(), &QPushButton::clicked, this, &MainWindow::ShowAuthor);
    connect(details_->SaveGamesButton(), &QPushButton::clicked, this,
            [this] { StartSavegameToolNow(session_); });
}

void MainWindow::BuildKeys()
{
    const auto key = [this](const QKeySequence& sequence, auto work) {
        connect(new QShortcut(sequence, this), &QShortcut::activated, this, work);
    };
    key(Qt::Key_F5, [this] { Play(); });
    key(Qt::CTRL | Qt::Key_P, [this] { Play(); });
    key(Qt::CTRL | Qt::Key_F, [this] {
        search_->setFocus();
        search_->selectAll();
    });
    key(Qt::Key_F3, [this] { SearchOn(1); });
    key(Qt::SHIFT | Qt::Key_F3, [this] { SearchOn(-1); });
}

bool MainWindow::eventFilter(QObject* object, QEvent* event)
{
    if (object != search_ || event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(object, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        search_->clear();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        // The list follows while the search keeps the keyboard.
        return QCoreApplication::sendEvent(view_, event);
    default:
        return false;
    }
}

void MainWindow::RefreshList()
{
    bar_->setValue(0);
    setWindowTitle(!session_.archive.Loaded() ? Words(Msg::ProgramName)
                                              : ToQt(WindowTitle(session_)));
    model_->SetRows(ListRows(session_), CurrentLevelCode(session_));
    if (!chosen_ || model_->RowOf(*chosen_) < 0)
        chosen_ = model_->Rows().empty() ? std::nullopt
                                         : std::optional<LevelCode>{model_->Rows().front().code};
    MarkChosen();
    ShowCounts();
    ShowChosen();
}

void MainWindow::Choose(LevelCode code)
{
    if (model_->RowOf(code) < 0)
        return;
    chosen_ = code;
    MarkChosen();
    ShowChosen();
}

void MainWindow::MarkChosen()
{
    const int row = chosen_ ? model_->ShownRowOf(*chosen_) : -1;
    const QSignalBlocker quiet{view_->selectionModel()};
    const QModelIndex index = row < 0 ? QModelIndex() : model_->index(row);
    view_->setCurrentIndex(index);
    view_->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
    if (row >= 0)
        view_->scrollTo(index);
    view_->viewport()->update();
}

void MainWindow::ShowChosen()
{
    showSoon_.stop();
    if (!chosen_)
        details_->ShowNothing();
    else if (const auto facts = SelectLevel(session_, *chosen_))
        details_->ShowFacts(session_, *facts);
}

void MainWindow::ShowActivity(const QString& text)
{
    details_->ShowActivity(text);
}

void MainWindow::RowChosen(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    ChooseRow(model_->RowOf(model_->CodeAt(index.row())));
}

void MainWindow::ChooseRow(std::ptrdiff_t row)
{
    const LevelCode code = model_->Rows()[static_cast<std::size_t>(row)].code;
    if (chosen_ == code)
        return;
    chosen_ = code;
    if (const std::ptrdiff_t index = FindLevel(session_, code); index >= 0)
        details_->ShowRecord(session_.archive.levels[static_cast<std::size_t>(index)]);
    showSoon_.start(showSoonMs);
}

void MainWindow::changeEvent(QEvent* event)
{
    // Whoever comes back from another program may have started or ended a game there.
    if (event->type() == QEvent::ActivationChange && !gameTimer_.isActive())
        gameTimer_.start(0);
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (session_.runningOperations > 0) {
        statusBar()->showMessage(Words(Msg::PleaseWaitToClose), statusMs);
        event->ignore();
        return;
    }
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
    if (!mayAsk || session_.runningOperations > 0) {
        EndNow();
        return true;
    }
    bool ends = true;
    Run([&] { ends = WritePreferences(session_); });
    return ends;
}

bool MainWindow::EndNow()
{
    if (const auto written = WriteAllNow(session_); !written)
        std::fprintf(stderr, "%s\n", GetMsg(Msg::NotSavedAtEnd, {written.Error().subject}).c_str());
    RememberPlace();
    return session_.runningOperations == 0 && QApplication::activeModalWidget() == nullptr;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (session_.runningOperations == 0 && !DraggedPaths(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    // Whoever dragged it must not wait for the dialog.
    QTimer::singleShot(0, this,
                       [this, paths = DraggedPaths(*event->mimeData())] { AddLevelFrom(paths); });
}

void MainWindow::RememberPlace() const
{
    QSettings places(PathToQt(session_.programFolder / OnDisk::FileNameWindowState),
                     QSettings::IniFormat);
    places.setValue(QStringLiteral("Principale/geometry"), saveGeometry());
    places.setValue(QStringLiteral("Principale/splitter"), splitter_->saveState());
}

void MainWindow::RestorePlace()
{
    ResizeToFit(*this, firstSize);
    const QSettings places(PathToQt(session_.programFolder / OnDisk::FileNameWindowState),
                           QSettings::IniFormat);
    restoreGeometry(places.value(QStringLiteral("Principale/geometry")).toByteArray());
    // The screen may be smaller than the one that the place is remembered of.
    if (!isMaximized() && !isFullScreen())
        ResizeToFit(*this, size());
    if (!splitter_->restoreState(places.value(QStringLiteral("Principale/splitter")).toByteArray()))
        splitter_->setSizes({380, 620});
}

} // namespace kestrova
