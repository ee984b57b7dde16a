#pragma once

#include "intake/package_sources.h"
#include "intake/source_tree.h"
#include "session/session.h"
#include "tools/tools.h"

namespace kestrova
{

/// All files of a folder into the level's, packages unpacked. Failures are told together at the
/// end; only a Stop is answered.
Status AddFilesFromFolder(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                          const Path& source, const Path& folder, const SourceOptions& options,
                          ProgressScope& progress, Subfolders subfolders, SourceReport& report);

/// A file, a package or a folder, whichever it is; what is none of them is told too.
Status AddSource(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                 const Path& source, const Path& folder, const SourceOptions& options,
                 ProgressScope& progress, Subfolders subfolders, SourceReport& report);

} // namespace kestrova
