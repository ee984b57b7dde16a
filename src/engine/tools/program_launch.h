#pragma once

#include "platform/process.h"
#include "tools/tools.h"

namespace kestrova
{

/// How an outside program is started, in its own folder: a Windows program through Wine, with the
/// settings' command and words, anything else as it is. The failure tells what of Wine is missing.
Result<platform::Launch> LaunchOf(const Tools& tools, const Path& program,
                                  const ToolArguments& arguments = {});

/// Wine's command with the settings' words behind it. The failure, of `subject`, says in words that
/// there is none.
Result<platform::Launch> WineItself(const Tools& tools, const std::string& subject);
/// A 32-bit program that Wine has no part for ends at once with 0 and without a word, so the part
/// is looked for beforehand. A command that is not Wine's own may bring one from anywhere.
bool Has32BitWine(const Path& wine);

/// How a program of Wine's own, the first of the words, is started in a prefix.
Result<platform::Launch> LaunchInPrefix(const Tools& tools, const Path& prefix,
                                        const ToolArguments& words);

/// The Wine prefix whose drive C the path lies on; empty when it lies on none.
Path PrefixAbove(const Path& path);
/// The Wine prefix that a program of that place runs in: the one on whose drive C it lies, or the
/// one that the surroundings name, or the usual one, which need not be there yet. Empty when nobody
/// says where the person's home is.
Path WinePrefixFor(const Path& place);

/// Why the system would not start this file; empty when it would.
std::string NotStartable(const Path& program);

/// True for a file that is started through Wine.
bool IsWindowsProgram(const Path& program);

} // namespace kestrova
