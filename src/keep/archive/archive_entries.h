#pragma once

#include "core/names.h"
#include "formats/archive_file.h"

#include <optional>

/// What the folder of an archive holds, by name.
namespace kestrova
{

/// True for `LEVEL_` and digits, in any case, however many.
bool IsLevelFolderName(std::string_view name);
/// The number in such a name; nothing for another name, and for a number that no record can hold.
std::optional<LevelCode> CodeOfLevelFolder(std::string_view name);
/// True for the name of a level's folder that was set aside.
bool IsAsideName(std::string_view name);

/// The names in the folder that belong to the archive, whatever stands behind them: those of
/// levels, on the list or not, and of levels that were set aside, and what the program notes beside
/// them. Other names there are the person's own.
Result<std::vector<std::string>> NamesOfArchive(const Path& folder);

} // namespace kestrova
