#pragma once

#include "formats/archive_file.h"

#include <optional>
#include <string_view>

/// What the folders of levels are called beside each other in an archive's folder.
namespace kestrova
{

/// True for `LEVEL_` and digits, in any case, however many.
bool IsLevelFolderName(std::string_view name);
/// The number in such a name; nothing for another name, and for a number that no record can hold.
std::optional<LevelCode> CodeOfLevelFolder(std::string_view name);

/// The name that a folder had before it was set aside; empty for any other one.
std::string_view NameBeforeAside(std::string_view name);
/// True for the name of a level's folder that was set aside.
bool IsAsideName(std::string_view name);

} // namespace kestrova
