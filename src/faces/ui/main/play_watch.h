#pragma once

#include "play/game_watch.h"
#include "play/hot_keys.h"
#include "play/play_times.h"
#include "ui/main/play_head.h"

#include <QTimer>
#include <functional>
#include <memory>
#include <set>

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

    /// What is going on with the game, whenever that is another thing.
    std::function<void(const PlayNow&)> shows = [](const PlayNow&) {};
    /// A line about what a key did; the desktop shows it too, over the game.
    std::function<void(const std::string&)> says = [](const std::string&) {};

    /// That level is about to be put into the folder, or started; then it is over.
    void PlayBegins(LevelCode code);
    void PlayEnds() { ShowState(); }
    void BringToFront();
    /// Ends the game that was started here, after a question; asked again, by force.
    void StopGame();

    [[nodiscard]] bool Running() const { return gameWatch_.Running(); }
    /// Somebody may have started or ended a game elsewhere.
    void LookSoon();
    /// A game was started here; says once where its keys are not heard.
    void GameHasStarted();
    /// What the line and the others show, whatever they showed before.
    void ShowGame();

private:
    void BeginKeys();
    void Look();
    bool LookNow();
    void CountPlaying();
    void HearOfGame();
    void ShowState();
    void Say(const std::string& words);

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
    QTimer clockTimer_{this};           ///< the shown time goes on
    std::int64_t runsSinceNs_ = 0;      ///< 0: it does not run
    std::set<std::int64_t> askedToEnd_; ///< ids of processes
};

} // namespace kestrova
