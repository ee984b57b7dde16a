#pragma once

#include <filesystem>

namespace kestrova::platform
{

/// Another program holds a lock on the file's first byte, so that this one could not have it. False
/// where there is no such file, or nobody can tell.
bool IsLockedByOther(const std::filesystem::path& file);

} // namespace kestrova::platform
