#pragma once

class QMainWindow;
class QSettings;
class QSplitter;

namespace kestrova
{

/// Where the main window stands on the screen, and how its panes share it.
void RememberWindowPlace(const QMainWindow& window, const QSplitter& panes, QSettings& places);
void RestoreWindowPlace(QMainWindow& window, QSplitter& panes, const QSettings& places);

} // namespace kestrova
