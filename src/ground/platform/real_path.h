#pragma once

#include <filesystem>
#include <system_error>

/// Where names lead, as the system sees it. None of these changes anything.
namespace kestrova::platform
{

/// The path from the root on, without links and dots; every part of it must be there.
std::error_code RealPath(const std::filesystem::path& path, std::filesystem::path& real);
/// The same where the last parts may be missing.
std::error_code RealPathSoFar(const std::filesystem::path& path, std::filesystem::path& real);
/// What a link says, which may be relative to the folder of the link; fails for all but links.
std::error_code LinkTarget(const std::filesystem::path& link, std::filesystem::path& target);
/// Both names are of one file or folder. False as well where one of them is not there.
bool IsSameFile(const std::filesystem::path& a, const std::filesystem::path& b);
/// A write in place would be let through.
bool MayWrite(const std::filesystem::path& file);

} // namespace kestrova::platform
