#include "ui/main/play_watch.h"

#include "archive/level_folders.h"
#include "history/standing.h"
#include "platform/clock.h"
#include "play/play_words.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "ui/dialogs/dialog_cattura.h"
#include "ui/widgets/qt_text.h"
#include "words/level_page.h"
#include "words/shots.h"
#include "words/ui_main.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMainWindow>
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
/// Minutes are shown.
constexpr int clockMs = 60'000;
/// How long a level is played is brought up to date so often.
constexpr int countMs = 60'000;

} // namespace

PlayWatch::PlayWatch(Session& session, QMainWindow& window)
    : QObject(&window), session_(session), window_(window), game_(new QLabel(&window))
{
    game_->setObjectName(QStringLiteral("Label_Game"));
    game_->hide();
    window.statusBar()->addPermanentWidget(game_);
    BeginKeys();
    gameTimer_.setObjectName(QStringLiteral("Timer_Game"));
    gameTimer_.setSingleShot(true);
    connect(&gameTimer_, &QTimer::timeout, this, &PlayWatch::Look);
    gameTimer_.start(lookSoonMs);
    clockTimer_.setObjectName(QStringLiteral("Timer_Clock"));
    connect(&clockTimer_, &QTimer::timeout, this, &PlayWatch::ShowState);
    minuteTimer_.setObjectName(QStringLiteral("Timer_Minute"));
    connect(&minuteTimer_, &QTimer::timeout, this, [this] {
        if (session_.running.operations == 0)
            CountPlaying();
    });
}

void PlayWatch::BeginKeys()
{
    keysTimer_.setObjectName(QStringLiteral("Timer1"));
    connect(&keysTimer_, &QTimer::timeout, this, [this] { hotKeys_.Tick(); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { hotKeys_.NoteClipboard(); });
    hotKeys_.ask = [this](const CapturedShot& shot) {
        CaptureDialog(session_, shot, &window_).exec();
    };
    // No box: it would take the screen from the game.
    hotKeys_.failed = [this](const std::string& words) { Say(words); };
    hotKeys_.done = [this](const std::string& words) { Say(words); };
    keysTimer_.start(hotKeysMs);
}

void PlayWatch::Say(const std::string& words)
{
    says(words);
    session_.machine.Notify(GetMsg(Msg::NotifyTitle), words);
}

void PlayWatch::LookSoon()
{
    if (!gameTimer_.isActive())
        gameTimer_.start(0);
}

bool PlayWatch::LookNow()
{
    gameNews_.clear(); // they wait on what is closed now
    const bool changed = gameWatch_.Look();
    for (const platform::Waker& waker : gameWatch_.Wakers()) {
        if (!waker.Works())
            continue;
        auto news = std::make_unique<QSocketNotifier>(waker.Descriptor(), QSocketNotifier::Read);
        connect(news.get(), &QSocketNotifier::activated, this, &PlayWatch::HearOfGame);
        gameNews_.push_back(std::move(news));
    }
    if (!gameWatch_.IsTold())
        gameTimer_.start(lookAgainMs);
    CountPlaying();
    return changed;
}

void PlayWatch::CountPlaying()
{
    if (playTimes_.Look(gameWatch_.Programs()))
        session_.list.Refresh();
    if (!gameWatch_.Running())
        minuteTimer_.stop();
    else if (!minuteTimer_.isActive())
        minuteTimer_.start(countMs);
}

void PlayWatch::HearOfGame()
{
    if (!gameWatch_.HasNews())
        return;
    for (const auto& news : gameNews_)
        news->setEnabled(false); // an end stays readable until the look
    lookOnceMore_ = true;
    gameTimer_.start(lookSoonMs);
}

void PlayWatch::Look()
{
    if (session_.running.operations > 0)
        return gameTimer_.start(lookAgainMs);
    const bool changed = LookNow();
    if (lookOnceMore_ && !gameTimer_.isActive())
        gameTimer_.start(lookOnceMoreMs);
    lookOnceMore_ = false;
    if (!changed)
        return;
    ShowGame();
    if (!gameWatch_.Running())
        ended();
}

void PlayWatch::ShowGame()
{
    const bool keys = session_.running.hotKeys && session_.machine.SeesKeys();
    game_->setText(Words(keys ? Msg::GameRunsKeys : Msg::GameRuns));
    game_->setToolTip(Words(keys ? Msg::GameRunsKeysTip : Msg::PlayLineRunsUnknown));
    game_->setVisible(gameWatch_.Running());
    ShowState();
}

void PlayWatch::ShowState()
{
    PlayNow now;
    const bool runs = gameWatch_.Running();
    if (!runs)
        runsSinceNs_ = 0;
    else if (runsSinceNs_ == 0)
        runsSinceNs_ = session_.machine.NowNs();
    if (runs) {
        now.step = PlayNow::Step::Runs;
        now.level =
            LevelNameOf(session_.archive, CurrentLevelCode(session_.Folders(), session_.archive));
        now.seconds = (session_.machine.NowNs() - runsSinceNs_) / platform::nsOfSecond;
        now.isOurs = session_.running.game > 0 && session_.machine.IsRunning(session_.running.game);
        if (!clockTimer_.isActive())
            clockTimer_.start(clockMs);
    } else {
        clockTimer_.stop();
        askedToEnd_.clear();
    }
    shows(now);
}

void PlayWatch::PlayBegins(LevelCode code)
{
    PlayNow now;
    now.step = StandsInTrle(session_.machine, session_.Folders(), session_.archive, code)
                   ? PlayNow::Step::Starts
                   : PlayNow::Step::Installs;
    now.level = LevelNameOf(session_.archive, code);
    shows(now);
}

void PlayWatch::BringToFront()
{
    if (!session_.machine.ActivateWindow(Told(Msg::GameWindowTitle)))
        says(GetMsg(Msg::PlayNotShown));
}

void PlayWatch::StopGame()
{
    const std::int64_t game = session_.running.game;
    if (session_.running.operations > 0 || game <= 0 || !session_.machine.IsRunning(game))
        return LookSoon();
    const Operation operation{session_};
    const bool byForce = askedToEnd_.contains(game);
    const std::string level =
        LevelNameOf(session_.archive, CurrentLevelCode(session_.Folders(), session_.archive));
    if (!session_.host.AskYesNo(GetMsg(byForce ? Msg::AskKillGame : Msg::AskStopGame, {level})))
        return;
    askedToEnd_.insert(game);
    if (const auto stopped = session_.machine.EndProgram(game, byForce); !stopped)
        TellFailure(session_.host, GetMsg(Msg::GameNotEnded), stopped.Error());
    LookSoon();
}

void PlayWatch::GameHasStarted()
{
    const bool noted = playTimes_.GameStarted();
    LookNow();
    if (noted)
        session_.list.Refresh();
    ShowGame();
    TellOfUnseenKeysOnce(session_);
}

} // namespace kestrova
