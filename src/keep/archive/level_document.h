#pragma once

#include "core/files.h"

#include <optional>
#include <string_view>

namespace kestrova
{

/// The document of a level: the file of that name in its folder. A record that was written without
/// the exact form of the name has `?` for letters beyond its code page; then the one file counts
/// that such a record would call so. A failure when the folder cannot be listed.
Result<std::optional<Path>> FindDocument(const Path& filesFolder, std::string_view field);

} // namespace kestrova
