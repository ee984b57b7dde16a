#pragma once

#include "core/files.h"

/// Where each file of a wad package belongs.
namespace kestrova
{

enum class WadGoal {
    Install,   ///< in a folder of both trees
    Scripts,   ///< among the new sources of scripts, to be merged
    Misplaced, ///< a wave of the game's `audio` folder whose name is no number: it goes
    Finished,  ///< a level that its tom file, if there is one, takes
    Ignored,   ///< programs too: none of the Level Editor's own is ever replaced
};

struct WadRoute {
    Path file;
    WadGoal goal = WadGoal::Ignored;
    std::string subfolder{}; ///< `\graphics\wads\`, of what is installed
};

struct WadRoutes {
    std::vector<WadRoute> files; ///< in the order of the files
    std::vector<Path> toms;      ///< names of the tom files among them
    std::vector<Path> wads;      ///< names of wads without a tom file of their stem
};

/// The routes of the files of one folder.
WadRoutes RouteWads(const std::vector<Path>& files);

} // namespace kestrova
