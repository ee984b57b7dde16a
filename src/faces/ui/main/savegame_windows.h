#pragma once

#include "saves/savegame_list.h"

class QWidget;

namespace kestrova
{

/// The windows of the menu of savegames, over `window`. Each is of the chosen level.
void ShowSavegames(Session& session, ListPurpose purpose, QWidget* window);
/// Asks for the folder first.
void ShowSavegameImport(Session& session, QWidget* window);
void ShowSavegameHistory(Session& session, QWidget* window);

/// Keeps what a running game writes for as long as `window` lives.
void WatchSavegames(Session& session, QWidget* window, std::function<bool()> gameRuns);

} // namespace kestrova
