#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

/// Folders that the person's surroundings name.
namespace kestrova::platform
{

/// The number of this user, by which programs call folders that all users share a place for.
std::uint64_t UserNumber();
/// `$HOME`, or, where it is not set, what the system notes for the user; empty where that is
/// nothing.
std::filesystem::path HomeFolder();
/// `$XDG_CACHE_HOME`, or the place that stands for it; empty where neither is told.
std::filesystem::path UserCacheFolder();
/// `$WINEPREFIX`; empty where it is not set, or no path from the root on.
std::filesystem::path NamedWinePrefix();
/// `$XDG_RUNTIME_DIR`, where what lives as long as the person's session lies; empty where it is not
/// set, or not this user's alone.
std::filesystem::path RuntimeFolder();
/// `$XDG_DATA_DIRS`, or what stands for it: what is installed for everybody lies there.
std::vector<std::filesystem::path> SharedDataFolders();

} // namespace kestrova::platform
