#pragma once

#include "formats/preferences.h"
#include "session/host.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrova
{

/// The file or folder that the person chooses as a source; the first chosen place is remembered for
/// the next. `audioType`: an ending like `.wav` to offer those alone; empty for packages and all.
std::optional<Path> ChooseSourceFile(Host& host, PreferencesRecord& preferences,
                                     const std::string& audioType = {});
std::vector<Path> ChooseSourceFiles(Host& host, PreferencesRecord& preferences);
std::optional<Path> ChooseSourceFolder(Host& host, PreferencesRecord& preferences);

} // namespace kestrova
