#pragma once

#include "core/result.h"

#include <string>
#include <string_view>

/// The player's settings, file `Kestrova.prf`: one record of 1296 bytes.
///
///        0    2  CaptureEnabled           522  256  Tom2PcName
///        2    2  PromptCapture            778  256  TombExeName
///        4    2  NoAutoCompile           1034  256  DownloadFolder
///        6    2  CheckEqualLevels        1290    2  NoDecompressInProperties
///        8    2  WriteLogFiles           1292    2  FullBackup
///       10  256  ArchivePath             1294    2  AutoSave
///      266  256  TrlePath
namespace kestrova
{

struct PreferencesRecord {
    bool captureEnabled = true;
    bool promptCapture = false;
    bool noAutoCompile = false;
    bool checkEqualLevels = true;
    bool writeLogFiles = false;
    std::string archivePath;
    std::string trlePath;
    std::string tom2PcName;
    std::string tombExeName;
    std::string downloadFolder;
    bool noDecompressInProperties = true;
    bool fullBackup = false;
    bool autoSave = true;
};

inline constexpr std::size_t preferencesSize = 1296;

/// The values of a first run.
PreferencesRecord DefaultPreferences();
/// A file that is cut gives the fields that are whole; the others keep their first-run values, and
/// so do texts without a letter but zeros.
PreferencesRecord ParsePreferences(std::string_view bytes);
/// True where bytes are missing, or all of them are zero.
bool IsCutOrEmpty(std::string_view bytes);
std::string FormatPreferences(const PreferencesRecord& record);

} // namespace kestrova
