#pragma once

#include "tools/run_to_end.h"
#include "world/world.h"

#include <fstream>

namespace kestrova::testing
{

/// What watches a tool in a test, and what the tool left.
struct ToolWatch : ToolProgressState {
    using ToolProgressState::ToolProgressState;

    ToolReport report; ///< for the calls that want one
    std::string error;
    std::string details; ///< all that stands beside the error; the last lines when there is none

    /// Notes the answer of a call. True when it was done.
    bool Done(const Status& status)
    {
        const Failure failure = status ? Failure{} : status.Error();
        error = failure.sentence;
        details = failure.reason +
                  (failure.reason.empty() || failure.details.empty() ? "" : "\r\n") +
                  failure.details;
        if (status)
            details = report.lastLines;
        return bool{status};
    }
};

/// A sandbox whose program folder is `tools`, until a test chooses another one; shell scripts are
/// put there that play an outside tool. The sandbox may lie in memory that no program may be
/// started from, so the folder is a link to one that lies with the other temporary files.
class ToolBox : public World
{
public:
    ToolBox()
    {
        session.programFolder = tools;
        std::filesystem::create_directory_symlink(tools, root / "tools");
    }
    ~ToolBox()
    {
        std::error_code failure;
        std::filesystem::remove_all(tools, failure);
    }

    Path AddTool(const std::string& name, const std::string& script) const
    {
        Path file = tools / name;
        std::ofstream{file} << "#!/bin/sh\n" << script << "\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }
    /// The tools that this machine has.
    void UseRealTools()
    {
        for (const char* name : {"zip", "unzip", "bsdtar", "madplay", "lame"})
            machine.tools[name] = platform::FindOnPath(name);
    }

    const Path tools = [] {
        std::string name = std::filesystem::temp_directory_path() / "kestrova-tools-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr)
            std::abort();
        return Path{name};
    }();
};

} // namespace kestrova::testing
