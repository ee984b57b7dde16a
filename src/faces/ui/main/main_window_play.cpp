// What the main window does while a game runs.
#include "ui/main/main_window.h"

#include "play/play_words.h"
#include "ui/dialogs/dialog_cattura.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_main.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QSocketNotifier>
#include <QStatusBar>

namespace kestrova
{

namespace
{

/// A program that is being started opens its file before it runs.
constexpr int lookSoonMs = 500;
/// One that is started by another program takes a while.
constexpr int lookOnceMoreMs = 3000;
/// Where nothing tells of a start or an end. The list of processes is read for each look.
constexpr int lookAgainMs = 2000;

} // namespace

void MainWindow::WatchPlay()
{
    game_ = new QLabel(this);
    game_->setObjectName(QStringLiteral("Label_Game"));
    game_->hide();
    statusBar()->addPermanentWidget(game_);

    keysTimer_.setObjectName(QStringLiteral("Timer1"));
    connect(&keysTimer_, &QTimer::timeout, this, [this] { hotKeys_.Tick(); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { hotKeys_.NoteClipboard(); });
    hotKeys_.ask = [this](const CapturedShot& shot) { CaptureDialog(session_, shot, this).exec(); };
    // No box: it would take the screen from the game.
    hotKeys_.failed = [this](const std::string& words) { statusBar()->showMessage(ToQt(words)); };
    keysTimer_.start(hotKeysMs);
    gameTimer_.setObjectName(QStringLiteral("Timer_Game"));
    gameTimer_.setSingleShot(true);
    connect(&gameTimer_, &QTimer::timeout, this, &MainWindow::LookForGame);
    gameTimer_.start(lookSoonMs);
}

bool MainWindow::LookNow()
{
    gameNews_.clear(); // they wait on what is closed now
    const bool changed = gameWatch_.Look();
    for (const platform::Waker& waker : gameWatch_.Wakers()) {
        if (!waker.Works())
            continue;
        auto news = std::make_unique<QSocketNotifier>(waker.Descriptor(), QSocketNotifier::Read);
        connect(news.get(), &QSocketNotifier::activated, this, &MainWindow::HearOfGame);
        gameNews_.push_back(std::move(news));
    }
    if (!gameWatch_.IsTold())
        gameTimer_.start(lookAgainMs);
    return changed;
}

void MainWindow::HearOfGame()
{
    if (!gameWatch_.HasNews())
        return;
    for (const auto& news : gameNews_)
        news->setEnabled(false); // an end stays readable until the look
    lookOnceMore_ = true;
    gameTimer_.start(lookSoonMs);
}

void MainWindow::LookForGame()
{
    if (session_.runningOperations > 0)
        return gameTimer_.start(lookAgainMs);
    const bool changed = LookNow();
    if (lookOnceMore_ && !gameTimer_.isActive())
        gameTimer_.start(lookOnceMoreMs);
    lookOnceMore_ = false;
    if (!changed)
        return;
    ShowGame();
    // What the game saved is counted.
    if (!gameWatch_.Running())
        ShowChosen();
}

void MainWindow::ShowGame()
{
    const bool keys = session_.hotKeysActive && session_.machine.SeesKeys();
    game_->setText(Words(keys ? Msg::GameRunsKeys : Msg::GameRuns));
    game_->setToolTip(Words(keys ? Msg::GameRunsKeysTip : Msg::GameRunsTip));
    game_->setVisible(gameWatch_.Running());
}

void MainWindow::GameHasStarted()
{
    LookNow();
    ShowGame();
    TellOfUnseenKeysOnce(session_);
}

} // namespace kestrova
