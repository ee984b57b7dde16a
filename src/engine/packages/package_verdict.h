#pragma once

#include "packages/package_tools.h"
#include "tools/run_to_end.h"

namespace kestrova
{

/// What is wrong with a package, or around it.
enum class PackageFault { None, Empty, Damaged, Locked, Method, Clash, LeadsOut, Names, NoRoom };

/// Of a tool that ran and did not do its work: the report's failure says what that means for the
/// person then, with the tool's own words beside it. `None` for one that was stopped, or never ran,
/// whose words stay.
PackageFault JudgePackage(const UnpackTool& unpacker, const Path& package, ToolReport& report);

/// True when a tool says of names that it cannot read them without being told their code page.
bool AsksForCodePage(const ToolReport& report);

} // namespace kestrova
