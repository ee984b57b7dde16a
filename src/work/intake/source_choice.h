#pragma once

#include "session/session.h"

namespace kestrova
{

/// The file or folder that the person chooses as a source; the first chosen place is remembered for
/// the next. `audioType`: an ending like `.wav` to offer those alone; empty for packages and all.
std::optional<Path> ChooseSourceFile(Session& session, const std::string& audioType = {});
std::vector<Path> ChooseSourceFiles(Session& session);
std::optional<Path> ChooseSourceFolder(Session& session);

} // namespace kestrova
