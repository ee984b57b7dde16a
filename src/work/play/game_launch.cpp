#include "play/game_launch.h"

#include "core/text.h"
#include "tools/program_launch.h"
#include "words/play.h"

namespace kestrova
{

Result<platform::Launch> GameLaunch(const Folders& folders, const PreferencesRecord& preferences,
                                    const Tools& tools)
{
    const Path folder = ResolvePath(folders.trle);
    const Path game = ResolvePath(folder / Path{Trim(preferences.tombExeName)});
    if (!FileExists(game))
        return Failure{ErrorCode::Missing, TextOf(game), GetMsg(Msg::GameFileMissing)};
    auto launch = LaunchOf(tools, game);
    if (launch)
        launch->folder = folder;
    return launch;
}

} // namespace kestrova
