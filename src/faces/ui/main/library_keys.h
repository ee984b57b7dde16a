#pragma once

class QWidget;

namespace kestrova
{

class LevelListPane;

/// The keys of the window that belong to no command: for the search and for the looks of the list.
void AddLibraryKeys(QWidget& window, LevelListPane& levels);

} // namespace kestrova
