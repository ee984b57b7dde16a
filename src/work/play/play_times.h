#pragma once

#include "formats/played_note.h"
#include "platform/clock.h"
#include "session/session.h"

namespace kestrova
{

/// Counts how long levels are played, and notes it of them with the time of the last play. The
/// clock is one that stands still while the machine sleeps and that nobody can set. What runs is
/// noted in the program's folder as well, so that nothing but a minute is lost when this program
/// ends before the game does; a game that still runs at the next start is counted on.
class PlayTimes
{
public:
    using Clock = std::int64_t (*)();
    explicit PlayTimes(Session& session, Clock steadyNs = platform::SteadyNs)
        : session_(session), steadyNs_(steadyNs)
    {
    }
    /// Brings the note up to date: the game may go on without this program.
    ~PlayTimes();
    PlayTimes(const PlayTimes&) = delete;
    PlayTimes& operator=(const PlayTimes&) = delete;

    /// What was seen to run in the Level Editor's folder, at each look and every minute while a
    /// game runs. Of those only the game counts: the folder's other programs are not played. True
    /// when the notes on a level have changed. Says nothing: what cannot be noted now waits.
    bool Look(const std::vector<platform::RunningProgram>& programs);
    /// The game was started here just now, and may have ended already. True as for a look.
    bool GameStarted();
    /// A game is counted now.
    [[nodiscard]] bool Counts() const { return runs_; }

private:
    /// The game among the programs; 0 without one.
    [[nodiscard]] std::int64_t GameOf(const std::vector<platform::RunningProgram>& programs) const;
    void ReadOnce(const std::vector<platform::RunningProgram>& programs);
    void CountOn();
    bool Begin(std::int64_t pid);
    bool NoteEnded();
    bool NoteBegin(PlayedGame& game);
    bool NoteEnd(const PlayedGame& game);
    [[nodiscard]] bool IsInArchive(const PlayedGame& game) const;
    void Write();

    Session& session_;
    Clock steadyNs_;
    bool read_ = false;
    PlayedNote note_;
    bool runs_ = false;          ///< the last of the note's games is the one that runs
    std::int64_t writtenNs_ = 0; ///< the steady clock when the note was written
    std::int64_t restNs_ = 0;    ///< played beyond whole seconds
    Path triedFor_;              ///< the archive's folder for which games were noted last
};

/// Notes what a former run of this program left to be counted; without anything left nothing is
/// looked at.
void CountGamesLeft(Session& session);
/// Stays while the game that was started here runs, counts, and keeps each savegame that it writes.
/// Stop ends the stay alone.
void CountUntilGameEnds(Session& session, PlayTimes& times);

} // namespace kestrova
