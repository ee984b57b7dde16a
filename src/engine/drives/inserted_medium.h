#pragma once

#include "core/files.h"
#include "formats/drive_setting.h"

#include <optional>

/// What lies in the drives of the settings: a note for each drive in which something was put, or
/// from which something was taken, since the settings were written.
namespace kestrova
{

/// A path of the settings.
Path PathOfSetting(const Path& programFolder, const std::string& path);

/// The file that was put in last; an empty path when it was taken out, none when nobody did either.
std::optional<Path> InsertedMedium(const Path& programFolder, const std::string& drive);
Status NoteInserted(const Path& programFolder, const std::string& drive, const Path& image);
/// The drive, beside `but`, into which the file was put; empty when it lies in none.
std::string DriveHolding(const Path& programFolder, const Path& image, const std::string& but);

} // namespace kestrova
