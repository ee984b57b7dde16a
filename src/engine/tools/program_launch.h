#pragma once

#include "platform/process.h"
#include "tools/tools.h"

namespace kestrova
{

/// How an outside program is started, in its own folder: a Windows program through Wine, with the
/// settings' command and words, anything else as it is. The failure tells what of Wine is missing.
Result<platform::Launch> LaunchOf(const Tools& tools, const Path& program,
                                  const ToolArguments& arguments = {});

/// True for a file that is started through Wine.
bool IsWindowsProgram(const Path& program);

} // namespace kestrova
