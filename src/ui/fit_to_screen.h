#pragma once

#include <QSize>
#include <QString>

class QFontMetrics;
class QMessageBox;
class QWidget;

namespace kestrova
{

/// Gives the window that size, or what its screen has room for.
void ResizeToFit(QWidget& window, QSize wanted);

/// A box whose words would make it larger than its screen shows them in `Text_Words` instead, where
/// they can be scrolled. To be called when the box has all its words and buttons.
void KeepOnScreen(QMessageBox& box);

/// The text with every word that is wider than that shortened in its middle, so that a label that
/// wraps it need not be wider.
QString WithWordsWithin(const QString& text, const QFontMetrics& metrics, int width);

} // namespace kestrova
