#include "platform/real_path.h"

#include <unistd.h>

namespace kestrova::platform
{

std::error_code RealPath(const std::filesystem::path& path, std::filesystem::path& real)
{
    std::error_code failure;
    real = std::filesystem::canonical(path, failure);
    return failure;
}

std::error_code RealPathSoFar(const std::filesystem::path& path, std::filesystem::path& real)
{
    std::error_code failure;
    real = std::filesystem::weakly_canonical(path, failure);
    return failure;
}

std::error_code LinkTarget(const std::filesystem::path& link, std::filesystem::path& target)
{
    std::error_code failure;
    target = std::filesystem::read_symlink(link, failure);
    return failure;
}

bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b)
{
    std::error_code failure;
    return std::filesystem::equivalent(a, b, failure);
}

bool MayWrite(const std::filesystem::path& file)
{
    return ::access(file.c_str(), W_OK) == 0;
}

} // namespace kestrova::platform
