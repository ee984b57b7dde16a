// What the main window does while a game runs.
#include "ui/main_window.h"

#include "app/play_words.h"
#include "ui/dialog_cattura.h"
#include "ui/qt_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QStatusBar>

namespace kestrova
{

namespace
{

/// The list of processes is read for it.
constexpr int gameWatchMs = 2000;

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
    connect(&gameTimer_, &QTimer::timeout, this, &MainWindow::LookForGame);
    gameTimer_.start(gameWatchMs);
}

void MainWindow::LookForGame()
{
    if (session_.runningOperations > 0 || !gameWatch_.Look())
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
    gameWatch_.Look();
    ShowGame();
    TellOfUnseenKeysOnce(session_);
}

} // namespace kestrova
