#pragma once

#include "platform/file_hook.h"

#include <functional>
#include <string>

namespace kestrova::platform
{

/// Called at the beginning and then now and then; False stops with `operation_canceled`.
using RemovalStep = std::function<bool()>;

/// Removes what stands there, folders with all that is in them: files, links (never entered),
/// pipes, sockets, devices. It goes by descriptors with a bounded number of them open, so that
/// neither depth nor the length of a path ends it, and folders without rights get them where that
/// is allowed. What another file system or another place of this one is mounted on stays with all
/// that is below. What can go goes; the answer is the first failure, and `stuck` names what stayed.
std::error_code RemoveTree(const Path& root, std::string& stuck, const RemovalStep& step = {});

} // namespace kestrova::platform
