#pragma once

#include "core/files.h"
#include "tools/tool.h"

#include <functional>

namespace kestrova
{

struct Session;

/// All that it takes to find and start an outside program. A value: a worker thread has its own.
struct Tools {
    Path programFolder;      ///< programs are looked for here first; a shell works here
    std::string wineCommand; ///< starts a Windows program
    std::string wineWords;   ///< extra words behind it, parted by blanks
    /// The executable of that name on the system's path; empty when there is none. Any thread may
    /// ask.
    std::function<Path(const std::string& name)> findOnPath;
};

/// What the session has of it, as it is now.
Tools ToolsOf(Session& session);

/// The program that stands for the tool here; empty when there is none.
Path FindTool(const Tools& tools, const Tool& tool);

/// What to do about a tool that is not there.
std::string InstallHint(const Tools& tools, const Tool& tool);

} // namespace kestrova
