#pragma once

#include <cerrno>
#include <system_error>

namespace kestrova::platform
{

/// What the system call just made left in errno.
inline std::error_code LastError()
{
    return {errno, std::generic_category()};
}

} // namespace kestrova::platform
