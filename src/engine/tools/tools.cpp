#include "tools/tools.h"

#include "platform/places.h"
#include "session/session.h"
#include "words/tools.h"

namespace kestrova
{

namespace
{

bool IsExecutable(const Path& file)
{
    constexpr std::uint32_t anyExecute = 0111;
    const platform::FileFacts facts = platform::FactsOf(file);
    return facts.kind == platform::FileKind::File && (facts.mode & anyExecute) != 0;
}

} // namespace

Tools ToolsOf(Session& session)
{
    return {
        session.programFolder, session.settings.wineCommand, session.settings.wineWords,
        [&machine = session.machine](const std::string& name) { return machine.FindTool(name); }};
}

Path FindTool(const Tools& tools, const Tool& tool)
{
    const Path own = ResolvePath(tools.programFolder / tool.name);
    return IsExecutable(own) ? platform::AbsolutePath(own) : tools.findOnPath(tool.name);
}

std::string InstallHint(const Tools& tools, const Tool& tool)
{
    return GetMsg(Msg::ToolInstallHint, {tool.name, TextOf(tools.programFolder), tool.package});
}

} // namespace kestrova
