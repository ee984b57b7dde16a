#pragma once

#include <QWidget>

class QAction;
class QMenu;

namespace kestrova
{

/// Gives a window and its controls, found by their object names, the captions of the words, each
/// button and menu item a letter of its own that reaches it from the keyboard, and each control a
/// name for a screen reader that no other one of the window has. The Tab key goes through a dialog
/// as it is read. To be called when all controls are there.
void SetCaptions(QWidget& window);

/// Gives each item of a menu, which has its words already, a letter of its own. Those whose words
/// change choose last, so that the others keep theirs.
void GiveLetters(const QMenu& menu);
/// Other words for an item of a menu, which gets its letter with the next `GiveLetters`.
void SetMenuText(QAction& action, const QString& text);

/// The captions that no control of the window bears, and controls without a caption that should
/// have one; empty when table and window agree.
QStringList CaptionFaults(const QWidget& window);

} // namespace kestrova
