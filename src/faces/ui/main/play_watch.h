#pragma once

#include "play/game_watch.h"
#include "play/hot_keys.h"
#include "play/play_times.h"

#include <QTimer>
#include <functional>
#include <memory>

class QLabel;
class QMainWindow;
class QSocketNotifier;

namespace kestrova
{

/// What the window does while a game runs: the keys of the game's own screen, and a line that says
/// that it runs. It hears of a game that comes or goes without its doing.
class PlayWatch : public QObject
{
public:
    PlayWatch(Session& session, QMainWindow& window);

    /// The game has ended; what it saved can be counted.
    std::function<void()> ended = [] {};

    [[nodiscard]] bool Running() const { return gameWatch_.Running(); }
    /// Somebody may have started or ended a game elsewhere.
    void LookSoon();
    /// A game was started here; says once where its keys are not heard.
    void GameHasStarted();

private:
    void BeginKeys();
    void Look();
    bool LookNow();
    void CountPlaying();
    void HearOfGame();
    void ShowGame();

    Session& session_;
    QMainWindow& window_;
    QLabel* game_;
    HotKeys hotKeys_{session_};
    GameWatch gameWatch_{session_};
    PlayTimes playTimes_{session_};
    QTimer keysTimer_{this};
    QTimer gameTimer_{this};
    QTimer minuteTimer_{this};
    /// Behind the watch, whose descriptors they wait on.
    std::vector<std::unique_ptr<QSocketNotifier>> gameNews_;
    bool lookOnceMore_ = false;
};

} // namespace kestrova
