#include "play/game_launch.h"

#include "tools/program_launch.h"
#include "words/play.h"

namespace kestrova
{

Result<platform::Launch> GameLaunch(Session& session)
{
    const Path folder = ResolvePath(session.TrleFolder());
    const Path game = ResolvePath(folder / Path{Trim(session.preferences.tombExeName)});
    if (!FileExists(game))
        return Failure{ErrorCode::Missing, TextOf(game), GetMsg(Msg::GameFileMissing)};
    auto launch = LaunchOf(ToolsOf(session), game);
    if (launch)
        launch->folder = folder;
    return launch;
}

} // namespace kestrova
