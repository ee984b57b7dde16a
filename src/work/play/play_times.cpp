#include "play/play_times.h"

#include "archive/level_folders.h"
#include "archive/level_token.h"
#include "archive/library_notes.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "history/standing.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "saves/savegame_watch.h"
#include "swap/folder_guard.h"
#include "words/play.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace kestrova
{

namespace
{

constexpr std::int64_t writeAgainNs = 50 * platform::nsOfSecond;
/// A clock that was never set tells no time of a play.
constexpr std::int64_t firstSound = 1'000'000'000;

Path PlayedFile(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragPlayed);
}

} // namespace

PlayTimes::~PlayTimes()
{
    if (!runs_)
        return;
    CountOn();
    Write();
}

bool PlayTimes::Look(const std::vector<platform::RunningProgram>& programs)
{
    ReadOnce(programs);
    const std::int64_t pid = GameOf(programs);
    bool noted = false;
    if (runs_ && note_.games.back().pid == pid) {
        CountOn();
        if (steadyNs_() - writtenNs_ >= writeAgainNs)
            Write();
    } else {
        if (runs_)
            CountOn();
        runs_ = false;
        noted = NoteEnded();
        noted = (pid != 0 && Begin(pid)) || noted;
    }
    return noted;
}

std::int64_t PlayTimes::GameOf(const std::vector<platform::RunningProgram>& programs) const
{
    // The system cuts the names of programs.
    constexpr std::size_t longestShown = 15;
    const std::string name{Trim(session_.preferences.tombExeName)};
    const auto isGame = [&](const platform::RunningProgram& program) {
        return program.pid == session_.running.game || EqualNames(program.name, name) ||
               (program.name.size() >= longestShown && name.size() > longestShown &&
                EqualNames(program.name, name.substr(0, program.name.size())));
    };
    // The one that is counted goes on being so beside a second one.
    const std::int64_t counted = runs_ ? note_.games.back().pid : 0;
    std::int64_t found = 0;
    for (const platform::RunningProgram& program : programs)
        if (program.pid == counted)
            return counted;
        else if (found == 0 && isGame(program))
            found = program.pid;
    return found;
}

void PlayTimes::ReadOnce(const std::vector<platform::RunningProgram>& programs)
{
    if (read_)
        return;
    read_ = true;
    const auto text = ReadFileIfThere(PlayedFile(session_.Folders()), longestPlayedNote);
    auto note = text && *text ? ParsePlayedNote(**text) : Result<PlayedNote>{PlayedNote{}};
    note_ = std::move(note).ValueOr({}); // one that is damaged told times alone
    if (note_.games.empty() || note_.games.back().pid == 0 || note_.games.back().boot.empty())
        return;
    // Of a game that ended meanwhile nobody knows when: only what was written counts.
    const PlayedGame& last = note_.games.back();
    runs_ = last.boot == session_.machine.BootId() &&
            std::any_of(programs.begin(), programs.end(),
                        [&](const auto& program) { return program.pid == last.pid; });
}

void PlayTimes::CountOn()
{
    PlayedGame& game = note_.games.back();
    const std::int64_t now = steadyNs_();
    restNs_ +=
        std::clamp<std::int64_t>(now - game.steadyNs, 0, mostSecondsOfGame * platform::nsOfSecond);
    game.steadyNs = now;
    game.seconds = std::min(game.seconds + restNs_ / platform::nsOfSecond, mostSecondsOfGame);
    restNs_ %= platform::nsOfSecond;
}

bool PlayTimes::Begin(std::int64_t pid)
{
    const Folders folders = session_.Folders();
    const LevelPlace level = StandingLevel(folders, session_.archive);
    if (level.code < 0)
        return false; // nobody can tell which level is played
    const Path home = HomeOf(folders, level);
    PlayedGame game{level.code,
                    home.native(),
                    level.code == originalCode ? std::string{}
                                               : TokenOfLevel(home, false).ValueOr({}),
                    pid,
                    session_.machine.BootId(),
                    std::max<std::int64_t>(steadyNs_(), 0),
                    0,
                    0};
    while (note_.games.size() >= mostPlayedGames)
        note_.games.erase(note_.games.begin());
    const bool noted = IsInArchive(game) && NoteBegin(game);
    note_.games.push_back(std::move(game));
    runs_ = true;
    restNs_ = 0;
    Write();
    return noted;
}

bool PlayTimes::NoteEnded()
{
    const Folders folders = session_.Folders();
    bool isNew = false;
    for (PlayedGame& game : note_.games)
        isNew = std::exchange(game.pid, 0) != 0 || isNew;
    if (note_.games.empty() || (!isNew && triedFor_ == folders.levels))
        return false;
    triedFor_ = folders.levels;
    bool noted = false;
    std::erase_if(note_.games, [&](const PlayedGame& game) {
        const bool done = game.seconds == 0 || (IsInArchive(game) && NoteEnd(game));
        noted = noted || (done && game.seconds > 0);
        return done;
    });
    Write();
    return noted;
}

bool PlayTimes::IsInArchive(const PlayedGame& game) const
{
    const Folders folders = session_.Folders();
    if (session_.archive.Find(game.code) == nullptr || folders.levels.empty())
        return false;
    const Path home = LevelHomeOf(folders, game.code);
    if (game.code == originalCode)
        return home == Path{game.home};
    // After a move the level lies elsewhere; another one may lie where it was.
    return game.token.empty() ? home == Path{game.home}
                              : KnownTokenOfLevel(home).ValueOr({}) == game.token;
}

bool PlayTimes::NoteBegin(PlayedGame& game)
{
    const std::int64_t now = session_.machine.NowNs() / platform::nsOfSecond;
    return bool{ChangeNotes(session_.Folders(), session_.archive, {game.code},
                            [&](LevelCode, LevelNote& note) {
                                if (now >= firstSound)
                                    note.lastPlayed = now;
                                if (note.status == LevelStatus::New)
                                    note.status = LevelStatus::Playing;
                                game.before = note.secondsPlayed;
                            })};
}

bool PlayTimes::NoteEnd(const PlayedGame& game)
{
    return bool{ChangeNotes(session_.Folders(), session_.archive, {game.code},
                            [&](LevelCode, LevelNote& note) {
                                // A program that was killed in between has noted it already.
                                if (note.secondsPlayed != game.before + game.seconds)
                                    note.secondsPlayed += game.seconds;
                            })};
}

void PlayTimes::Write()
{
    writtenNs_ = steadyNs_();
    const Path file = PlayedFile(session_.Folders());
    // A minute may be lost, and nothing else: no failure of this keeps anybody from playing.
    if (note_.games.empty())
        (void)platform::Unlink(ResolvePath(file));
    else if (MakeFolders(file.parent_path()))
        (void)WriteWholeFile(file, FormatPlayedNote(note_), false);
}

bool PlayTimes::GameStarted()
{
    ReadOnce({});
    if (session_.running.game == 0 || (runs_ && note_.games.back().pid == session_.running.game))
        return false;
    if (runs_)
        CountOn();
    runs_ = false;
    const bool noted = NoteEnded();
    return Begin(session_.running.game) || noted;
}

void CountGamesLeft(Session& session)
{
    if (FileExists(PlayedFile(session.Folders())))
        PlayTimes{session}.Look(ProgramsInTrle(session, session.Folders()));
}

void CountUntilGameEnds(Session& session, PlayTimes& times)
{
    constexpr std::chrono::milliseconds slice{50};
    constexpr int lookAgain = 20; ///< slices
    constexpr int lookAnyway = 1200;
    const auto wait = session.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::WaitsForGame));
    wait->AllowStop();
    const int ownOperations = session.running.operations;
    SavegameWatch watch;
    for (int slices = 0; times.Counts() && wait->Step(); ++slices) {
        watch.Tick(session, true, ownOperations);
        if (slices % lookAnyway == 0 ||
            (slices % lookAgain == 0 && !session.machine.IsRunning(session.running.game)))
            times.Look(ProgramsInTrle(session, session.Folders()));
        std::this_thread::sleep_for(slice);
    }
    watch.Tick(session, false, ownOperations);
}

} // namespace kestrova
