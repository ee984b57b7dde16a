#pragma once

#include <QWidget>

class QMenu;

namespace kestrova
{

/// Gives a window and its controls, found by their object names, the captions of the words, and
/// each button and menu item a letter of its own that reaches it from the keyboard.
void SetCaptions(QWidget& window);

/// Gives each item of a menu, which has its words already, a letter of its own.
void GiveLetters(const QMenu& menu);

/// The captions that no control of the window bears, and controls without a caption that should
/// have one; empty when table and window agree.
QStringList CaptionFaults(const QWidget& window);

} // namespace kestrova
