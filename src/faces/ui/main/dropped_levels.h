#pragma once

#include "core/names.h"
#include "session/session.h"

#include <QString>

#include <vector>

namespace kestrova
{

/// What of dropped files may be levels, or archives. Pictures and savegames are for the chosen
/// level.
std::vector<Path> LevelsAmong(std::vector<Path> paths);
/// What of them are files of archives is taken out, and answered.
std::vector<Path> TakeArchives(std::vector<Path>& paths);
/// `one.kva, two.kva`.
std::string NamesOf(const std::vector<Path>& paths);
/// Whether each of that many sources is a level of its own, or all of them make one.
YesNoCancel AskForEach(Session& session, const std::vector<Path>& sources, std::size_t count);
/// What the window says while they are held above it; empty where it takes none of them.
QString WelcomeOf(const std::vector<Path>& paths);

} // namespace kestrova
