#pragma once

#include "archive/archive_parts.h"

/// Where a level's screen-shots lie, what new ones are called, and how they are counted.
namespace kestrova
{

Path ShotFolderOf(const Folders& folders, LevelCode code);

/// A free path in the level's folder: the first of `1) Title.jpg`, `2) Title.jpg` … that no file
/// bears. An empty extension becomes `.jpg`, for the caller too. A title that no file name has room
/// for is cut.
Result<Path> NewShotName(const Folders& folders, const Archive& archive, std::size_t index,
                         std::string& extension);

/// The name with an ending of a picture: the one that it has, otherwise `extension`.
std::string WithShotEnding(const std::string& name, std::string_view extension);
/// True for a name that the list of pictures shows.
bool IsShotName(std::string_view name);
/// A failure for a file without a picture in it, whatever its name says.
Status HoldsPicture(const Path& file);

/// Adds to the level's size of screen-shots and, but for the record at index 0, to the archive's
/// total, and saves the archive.
void AddShotSize(const ArchiveParts& parts, double bytes, std::size_t index);

} // namespace kestrova
