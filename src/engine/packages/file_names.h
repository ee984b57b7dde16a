#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragLevelConfig = "\\kestrova.cfg";
/// What unzip reads, and what bsdtar does.
inline constexpr std::string_view ZipEndings = ".zip|.zipx";
inline constexpr std::string_view PackageEndings = ".7z|.rar|.tar|.tgz|.tar.gz|.tar.bz2|.tar.xz|.tar.zst|.tar.lzma|.tar.z|.lzh|.lha|.cab|.iso";

} // namespace kestrova::OnDisk
