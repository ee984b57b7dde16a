#pragma once

#include "session/host.h"
#include "tools/tools.h"

/// Paths as programs that run through Wine know them.
namespace kestrova
{

/// A path on a drive of the prefix: of those that hold it, the one that reaches furthest. A prefix
/// that is not there yet will have its drive C and, as Z, the whole disk.
std::string WindowsPath(const Path& prefix, const Path& path);

/// A path as the program understands it: a Windows program has drives.
std::string PathForProgram(const Path& program, const Path& path);

/// The same for a file that is given to a program by name. A Windows program of old splits its
/// words at blanks and knows the letters of one code page, so the folder is given in its short
/// form, which Wine is asked for, unless it is plain. The name stays in full, since what the
/// program makes is called after it. All is in full where Wine knows no short form, or was stopped.
std::string ShortPathForProgram(const Tools& tools, const Path& program, const Path& file,
                                ProgressScope& progress);

} // namespace kestrova
