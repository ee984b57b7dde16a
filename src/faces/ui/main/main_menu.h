#pragma once

#include "app/command.h"

#include <QMenuBar>
#include <functional>

class QMenu;

namespace kestrova
{

/// What happens when a command is chosen.
using Invoke = std::function<void(const CommandRow&)>;

/// The menu bar from the rows of the command table; a command that a later version brings is shown
/// disabled. `SetCaptions` gives the letters.
void BuildMenu(QMenuBar& bar, const Invoke& invoke);

/// Captions that tell what their command would do now, and whether it would do anything.
void ShowMenuNow(const QWidget& window, const Session& session);

/// The commands on one level, for a right click on it; `GiveLetters` gives the letters.
void FillLevelMenu(QMenu& menu, const Invoke& invoke);

/// The names of all commands of the menu bar, for those who go through them.
QStringList MenuCommands();

} // namespace kestrova
