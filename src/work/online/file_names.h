#pragma once

#include <string_view>

// clang-format off

/// Names of files and folders that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view FragUrlList = "\\UrlList.bin";
inline constexpr std::string_view FragNewUrlList = "\\new_list.bin";
inline constexpr std::string_view PartPrefix = ".kv~part-";
inline constexpr std::string_view PartNoteEnding = ".json";
inline constexpr std::string_view ZipEnding = ".zip";
inline constexpr std::string_view PlainConfigName = "config.cfg";

} // namespace kestrova::OnDisk
