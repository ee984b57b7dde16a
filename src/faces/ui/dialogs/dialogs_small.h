#pragma once

#include "session/session.h"

#include <QDialog>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace kestrova
{

/// `Dialog_Splash`: the picture of the program's folder, until a click or a key.
class SplashDialog : public QDialog
{
public:
    explicit SplashDialog(const QPixmap& picture);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

/// `Dialog_About`.
class AboutDialog : public QDialog
{
public:
    explicit AboutDialog(QWidget* parent);
};

/// `Dialog_NewArc`: a new archive when accepted; closing it means to load one.
class NewArcDialog : public QDialog
{
public:
    explicit NewArcDialog(QWidget* parent);
};

/// Parts that several dialogs are made of.
QPushButton* NamedButton(QWidget* parent, const char* name);
/// Shows any text as it is, on as many lines as it takes.
QLabel* NamedLabel(QWidget* parent, const char* name);
/// `Pul_Help`, `Pul_Ok`, `Pul_Cancel` in a row; the last two accept and reject the dialog.
QHBoxLayout* AnswerButtons(QDialog& dialog);
/// Asks before a window closes whose texts nobody has stored; closing the question means No.
bool MayDropTyped(Session& session);

} // namespace kestrova
