#include "ui/main/window_place.h"

#include "ui/widgets/fit_to_screen.h"

#include <QMainWindow>
#include <QSettings>
#include <QSplitter>

namespace kestrova
{

namespace
{

constexpr QSize mainSize{1060, 680};

} // namespace

void RememberWindowPlace(const QMainWindow& window, const QSplitter& panes, QSettings& places)
{
    places.setValue(QStringLiteral("Principale/geometry"), window.saveGeometry());
    places.setValue(QStringLiteral("Principale/splitter"), panes.saveState());
}

void RestoreWindowPlace(QMainWindow& window, QSplitter& panes, const QSettings& places)
{
    ResizeToFit(window, mainSize);
    window.restoreGeometry(places.value(QStringLiteral("Principale/geometry")).toByteArray());
    // The screen may be smaller than the one that the place is remembered of.
    if (!window.isMaximized() && !window.isFullScreen())
        ResizeToFit(window, window.size());
    if (!panes.restoreState(places.value(QStringLiteral("Principale/splitter")).toByteArray()))
        panes.setSizes({430, 570});
}

} // namespace kestrova
