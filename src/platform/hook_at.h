#pragma once

#include "platform/file_hook.h"

#include <functional>

namespace kestrova::platform
{

/// `AskFileHook` for a path that is costly to put together: it is made only for a hook that is
/// there.
[[nodiscard]] std::error_code AskFileHookAt(FileAction action, const std::function<Path()>& path);

} // namespace kestrova::platform
