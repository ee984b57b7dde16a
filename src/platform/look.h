#pragma once

#include "platform/files.h"

namespace kestrova::platform
{

/// A look whose failure is told apart from an absence: `facts.kind` is `Missing` without an error
/// only where nothing stands under that name, and nobody may decide by `facts` after an error.
/// Follows links; a dangling one is `Missing`.
std::error_code Look(const Path& path, FileFacts& facts);
/// The same of a link itself.
std::error_code LookAtLink(const Path& path, FileFacts& facts);

} // namespace kestrova::platform
