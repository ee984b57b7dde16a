#pragma once

#include <filesystem>
#include <system_error>

namespace kestrova::platform
{

/// A named pipe that nobody but this user may open. Fails where the name is taken, and on file
/// systems that have none.
std::error_code MakeFifo(const std::filesystem::path& path);

} // namespace kestrova::platform
