#pragma once

#include "core/files.h"
#include "formats/drive_setting.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// What this platform needs beside the preferences record: `kestrova.ini` of the program's folder,
/// in UTF-8, with groups and `name=value` lines.
namespace kestrova
{

/// Of the texts as they stand in the words.
inline constexpr std::string_view toldLanguage = "en";

/// The most that can be set of files, changes and megabytes that are kept.
inline constexpr std::int32_t mostThatIsKept = 1'000'000;

struct ProgramSettings {
    std::string language{toldLanguage};  ///< of the texts; one that this version lacks stays
    std::string wineCommand;             ///< starts a Windows program
    std::string wineWords;               ///< extra words behind it, parted by blanks
    std::int32_t historyCount = 200;     ///< kept files a level
    std::int32_t historyMegabytes = 200; ///< kept bytes a level
    std::int32_t undoCount = 50;         ///< changes that can be undone
    std::int32_t undoMegabytes = 500;    ///< what is kept for them, removed levels too
    bool unseenKeysTold = false;         ///< that this desktop keeps keys to itself was said once
    bool exportSavegames = false;        ///< a level's zip holds its savegames too
    std::string updateServers;           ///< of lists of addresses, up to three, parted by blanks
    std::string wadServer;               ///< where packages of wads come from
    std::vector<DriveSetting> drives;    ///< each name once
    /// Exact folders whose letters the code page of a record cannot hold, by the field's name.
    std::map<std::string, std::string> exactFolders;
};

ProgramSettings DefaultSettings();
/// A file that is missing gives the first-run values; so does a value that makes no sense.
Result<ProgramSettings> ReadSettings(const Path& programFolder);
/// True for a file of which nothing can be read, since it is no such file.
bool SettingsAreDamaged(const Path& programFolder);
/// Groups and names that this version does not know stay as they are.
Status WriteSettings(const Path& programFolder, const ProgramSettings& settings);

/// Remembers `folder` under `field` when the code page cannot hold it, or when it holds bytes that
/// no text has, forgets it otherwise.
void KeepExactFolder(ProgramSettings& settings, const std::string& field,
                     const std::string& folder);
/// The exact form of what a record holds: the remembered one when it is what the record was
/// written from.
std::string ExactFolder(const ProgramSettings& settings, const std::string& field,
                        const std::string& fromRecord);

} // namespace kestrova
