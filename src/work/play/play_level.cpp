#include "play/play_level.h"

#include "archive/level_folders.h"
#include "core/name_list.h"
#include "play/game_launch.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/install.h"
#include "swap/level_gaps.h"
#include "tools/tools.h"
#include "words/levels.h"
#include "words/play.h"

namespace kestrova
{

namespace
{

/// Its process id.
Result<std::int64_t> StartGame(Machine& machine, const Folders& folders,
                               const PreferencesRecord& preferences, const Tools& tools)
{
    const auto launch = GameLaunch(folders, preferences, tools);
    if (!launch)
        return launch.Error();
    return machine.Start(*launch);
}

/// True when nothing is known to be missing, or the person goes on nevertheless. What cannot be
/// looked at is told by the installation.
bool IsWholeEnough(Host& host, const Folders& folders, const Archive& archive, LevelCode code)
{
    const auto gaps =
        GapsOf(folders, archive.levels[static_cast<std::size_t>(FindLevel(archive, code))]);
    if (!gaps)
        return true;
    const std::vector<std::string> names = PlayGaps(*gaps);
    if (names.empty())
        return true;
    return host.AskYesNo(GetMsg(Msg::AskPlayIncomplete, {ShownNames(names), lineBreak}));
}

} // namespace

bool PlayLevel(Session& session, LevelCode code, bool start)
{
    Operation operation{session};
    if (FindLevel(session.archive, code) < 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::UnknownCodeInList) + std::to_string(code));
        return false;
    }
    if (!StandsInTrle(session.machine, session.Folders(), session.archive, code)
            ? !MayChangeTrle(session, session.Folders())
            : start && !MayStartBesideOthers(session, session.Folders()))
        return false;
    if (!StandsInTrle(session.machine, session.Folders(), session.archive, code) &&
        !IsWholeEnough(session.host, session.Folders(), session.archive, code))
        return false;
    if (!InstallLevel(session, code)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::PlayInstallFailed));
        return false;
    }
    session.list.Refresh();
    if (!start)
        return true;
    const auto game =
        StartGame(session.machine, session.Folders(), session.preferences, ToolsOf(session));
    if (!game) {
        TellFailure(session.host, GetMsg(Msg::GameNotStarted), game.Error());
        return false;
    }
    session.running.game = *game;
    session.machine.ClearClipboard();
    session.running.hotKeys = true;
    return true;
}

} // namespace kestrova
