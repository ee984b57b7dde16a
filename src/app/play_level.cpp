#include "app/level_commands.h"
#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "swap/install.h"
#include "swap/marker.h"
#include "swap/recovery.h"
#include "swap/swap_notes.h"

namespace kestrova
{

namespace
{

bool StartGame(Session& session)
{
    const auto launch = GameLaunch(session);
    if (!launch) {
        TellFailure(session, GetMsg(Msg::GameNotStarted), launch.Error());
        return false;
    }
    const auto pid = session.machine.Start(*launch);
    if (!pid) {
        TellFailure(session, GetMsg(Msg::GameNotStarted), pid.Error());
        return false;
    }
    session.gamePid = *pid;
    return true;
}

} // namespace

bool TrleIsQuiet(Session& session)
{
    const auto programs = session.machine.ProgramsRunningIn(session.TrleFolder());
    if (programs.empty())
        return true;
    std::vector<std::string> names;
    for (const platform::RunningProgram& program : programs)
        names.push_back(program.name);
    return session.host.AskYesNo(
        GetMsg(Msg::ProgramsRunInTrle, {Join(names, ", "), lineBreak, lineBreak}));
}

bool StandsInTrle(const Session& session, LevelCode code)
{
    if (code == originalCode || FindLevel(session, code) < 0 || CurrentLevelCode(session) != code ||
        !InterruptedWork(session).empty())
        return false;
    // After a new start of the machine the files in the folder are looked at once more.
    const auto owner = OwnerThatCounts(session);
    return owner && owner->owner == code && owner->bootId == session.machine.BootId();
}

bool PlayLevel(Session& session, LevelCode code, bool start)
{
    Operation operation{session};
    if (FindLevel(session, code) < 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::UnknownCodeInList) + std::to_string(code));
        return false;
    }
    if (!StandsInTrle(session, code) && !TrleIsQuiet(session))
        return false;
    if (!InstallLevel(session, code)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::PlayInstallFailed));
        return false;
    }
    session.list.Refresh();
    if (!start)
        return true;
    if (!StartGame(session))
        return false;
    session.machine.ClearClipboard();
    session.hotKeysActive = true;
    return true;
}

} // namespace kestrova
