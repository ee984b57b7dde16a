#pragma once

#include "core/copying.h"
#include "session/host.h"

namespace kestrova
{

/// A window that says that files are being looked through.
std::unique_ptr<ProgressScope> BeginScanning(Host& host);
/// Removes a folder with all that is in it, label and bar following.
Status RemoveTreeWithProgress(const Path& folder, ProgressScope& progress);
/// Copies a tree; the bar follows the bytes. Every file is compared with its source when `verify`
/// says so.
Status CopyTreeWithProgress(const Path& source, const Path& target, ProgressScope* progress,
                            Verify verify = Verify::Size);

} // namespace kestrova
