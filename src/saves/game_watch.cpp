#include "saves/game_watch.h"

namespace kestrova
{

bool GameWatch::Look()
{
    const Path folder = session_.TrleFolder();
    const bool running = session_.machine.IsRunning(session_.gamePid) ||
                         (!folder.empty() && !session_.machine.ProgramsRunningIn(folder).empty());
    const bool changed = running != running_;
    running_ = running;
    return changed;
}

} // namespace kestrova
