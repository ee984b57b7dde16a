#pragma once

#include "formats/level_config.h"
#include "session/session.h"

namespace kestrova
{

/// What is settled before an export; what is not is asked.
struct ExportChoices {
    Path zip{};                        ///< empty: chosen by the person
    std::optional<bool> screenshots{}; ///< no value: asked when the level has some
    std::optional<bool> savegames{};   ///< no value: as the settings say
};

/// Packs a level's files, as the game needs them, with its configuration file into a zip. Level and
/// archive stay as they are; a zip of that name is replaced by a whole one or not at all. Shows its
/// failure; False then, and when the person cancelled.
bool ExportLevel(Session& session, LevelCode code, const ExportChoices& choices = {});

/// The zip of a level of that name in a folder: beside what is there, never in its place.
Result<Path> ZipIn(const Path& folder, const std::string& levelName);

/// The configuration file for a folder with a level's files: its texts from the record, the names
/// and sizes of what lies in the folder.
Result<LevelConfig> ConfigForFolder(const LevelRecord& level, const Path& folder);

} // namespace kestrova
