#pragma once

#include "session/session.h"
#include "ui/main/main_menu.h"

class QWidget;

namespace kestrova
{

/// What the menu of savegames does; dialogs stand over `window`. Each command is refused while an
/// operation runs.
Commands SavegameCommands(Session& session, QWidget* window);

/// Starts the sibling tool on the selected level.
void StartSavegameToolNow(Session& session);

/// Keeps what a running game writes for as long as `window` lives.
void WatchSavegames(Session& session, QWidget* window, std::function<bool()> gameRuns);

} // namespace kestrova
