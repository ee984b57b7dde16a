#pragma once

#include <QKeySequence>
#include <QMenuBar>
#include <functional>
#include <map>
#include <string>

namespace kestrova
{

/// What a command of the menu does, by its name; a command without an entry is shown disabled.
using Commands = std::map<std::string, std::function<void()>>;

/// The menu bar in the order of the command table. Captions come with `SetCaptions`. `more` are the
/// commands of a part that keeps its own together.
void BuildMenu(QMenuBar& bar, Commands commands, Commands more = {});

/// All commands of the table, for those who go through them.
QStringList MenuCommands();

} // namespace kestrova
