#pragma once

#include <string_view>

// clang-format off

/// Endings and patterns that tell kinds of files.
namespace kestrova::OnDisk
{

inline constexpr std::string_view EndingZip = ".zip";
inline constexpr std::string_view EndingDat = ".dat";
inline constexpr std::string_view PicturePatterns = "*.jpg|*.bmp";
inline constexpr std::string_view PatBmp = "*.bmp";
inline constexpr std::string_view PatTr4Zl = "*.tr4.zl";
inline constexpr std::string_view Mp3Extension = ".mp3";
inline constexpr std::string_view WavExtension = ".wav";
inline constexpr std::string_view PatShotJpg = "*.jpg";
inline constexpr std::string_view EndingNew = ".new";
inline constexpr std::string_view EndingOld = ".old";
inline constexpr std::string_view ZlExtension = ".zl";
inline constexpr std::string_view LoadBmp = "load.bmp";
inline constexpr std::string_view LoadJpg = "load.jpg";
inline constexpr std::string_view FragLogFile = "\\LevelLog_~1.txt";
inline constexpr std::string_view PatAll = "*";
inline constexpr std::string_view PatAllFiles = "*.*";
inline constexpr std::string_view DefaultDownloadFolder = "c:\\";

} // namespace kestrova::OnDisk
