#pragma once

#include <string_view>

// clang-format off

/// Names of files, folders and kinds that this floor alone uses.
namespace kestrova::OnDisk
{

inline constexpr std::string_view MailScheme = "mailto:";
inline constexpr std::string_view WebScheme = "http://";
inline constexpr std::string_view WebSchemes = "http://|https://|ftp://";
inline constexpr std::string_view DirTempConfig = "\\_temp_config";
inline constexpr std::string_view FragUploadTexts = "\\unfinished_upload.cfg";
inline constexpr std::string_view DirTempMp3 = "\\_temp_mp3";
inline constexpr std::string_view DirConfigOnly = "\\_config_";
inline constexpr std::string_view EndingTomFile = ".tom";
inline constexpr std::string_view EndingWad = ".wad";
inline constexpr std::string_view EveryEndingOf = ".*";
inline constexpr std::string_view StandardWads = "catacomb|city|newcity|angkor|tut1|title|library|cleopal|settomb|coastal|karnak|guard";
inline constexpr std::string_view DecoderUtilities = "madplay.exe|start_me.exe";
inline constexpr std::string_view UploadName = "~1.zip";
inline constexpr std::string_view ConfigUploadName = "Config_~1.zip";

} // namespace kestrova::OnDisk
