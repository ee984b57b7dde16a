#pragma once

#include <QKeySequence>
#include <QMenuBar>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kestrova
{

/// What a command of the menu does, by its name; a command without an entry is shown disabled.
using Commands = std::map<std::string, std::function<void()>>;

/// The menu bar in the order of the command table. Captions come with `SetCaptions`. Each of
/// `parts` holds the commands of one part of the program.
void BuildMenu(QMenuBar& bar, std::vector<Commands> parts);

/// All commands of the table, for those who go through them.
QStringList MenuCommands();

} // namespace kestrova
