#pragma once

#include "session/folders.h"
#include "session/host.h"

#include <optional>
#include <string>

namespace kestrova
{

/// The help's text in Windows-1252, each line end one letter: that of the program's folder, or else
/// the one in `resources`, where the program is installed. No value, in words, without either.
std::optional<std::string> LoadHelp(Host& host, const Folders& folders, const Path& resources);

} // namespace kestrova
