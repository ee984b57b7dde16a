#pragma once

#include <string_view>

// clang-format off

/// Names of files and folders that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragUrlList = "\\UrlList.bin";
inline constexpr std::string_view FragNewUrlList = "\\new_list.bin";
inline constexpr std::string_view DirOnlineTemp = "\\_temp_online";
inline constexpr std::string_view DirOnlineUnpacked = "\\_temp_online_zip";
inline constexpr std::string_view PartPrefix = ".kv~part-";
inline constexpr std::string_view PartNoteEnding = ".json";
inline constexpr std::string_view ZipEnding = ".zip";
inline constexpr std::string_view PlainConfigName = "config.cfg";

} // namespace kestrova::OnDisk
