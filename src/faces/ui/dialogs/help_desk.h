#pragma once

#include "app/help_tags.h"
#include "session/session.h"

#include <QObject>
#include <QPointer>

class QPushButton;
class QWidget;

namespace kestrova
{

/// Opens the help: by F1 wherever it is pressed, by a window's `Pul_Help`, by the menu. Installed
/// on the application for the length of its life. While work goes on that asks nothing, F1 is
/// nothing.
class HelpDesk : public QObject
{
public:
    explicit HelpDesk(Session& session);
    ~HelpDesk() override;

    /// The one of this program; none in a test that has not made one.
    static HelpDesk* Current();

    /// The help at that tag, over `parent`; when the help itself is open there, it goes on.
    void Show(HelpTag tag, QWidget* parent);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    Session& session_;
};

/// What the help tells of a control: its own tag, or that of what it stands in.
HelpTag HelpTagAt(const QWidget* control);
/// A tag for what the names do not tell: a page that stands for several steps, say.
void SetHelpTag(QWidget& control, HelpTag tag);
/// `Pul_Help`, which opens the help at the tag of the window or page that it stands in.
QPushButton* HelpButton(QWidget* parent);

} // namespace kestrova
