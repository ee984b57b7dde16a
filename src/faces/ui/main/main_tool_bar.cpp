#include "ui/main/main_tool_bar.h"

#include "ui/main/command_looks.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_main.h"

#include <QAction>
#include <QEvent>
#include <QMainWindow>
#include <QToolBar>
#include <QToolButton>

namespace kestrova
{

namespace
{

/// Words beside its picture are worth their room on the first button alone.
void ShowWords(QToolBar& bar, QAction& action)
{
    action.setIconText(Words(Msg::AddLevelShort));
    if (auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(&action)))
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

/// Where the window is low the list has the bar's room; all its commands are in the menu.
class RoomForBar : public QObject
{
public:
    RoomForBar(QToolBar& bar, QMainWindow& window) : QObject(&bar), bar_(bar)
    {
        window.installEventFilter(this);
        ShowIn(window);
    }

    bool eventFilter(QObject* window, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            ShowIn(*static_cast<QWidget*>(window));
        return false;
    }

private:
    void ShowIn(const QWidget& window)
    {
        constexpr int fewestLines = 20;
        bar_.setVisible(window.height() >= fewestLines * bar_.fontMetrics().lineSpacing());
    }

    QToolBar& bar_;
};

} // namespace

void AddToolBar(QMainWindow& window)
{
    auto* bar = new QToolBar(&window);
    bar->setObjectName(QStringLiteral("Bar_Tools"));
    bar->setWindowTitle(Words(Msg::ToolBarName));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu); // which would hide it, with no way back
    for (const std::string_view name : ButtonsAtHand()) {
        if (name.empty()) {
            bar->addSeparator();
            continue;
        }
        auto* action = window.findChild<QAction*>(ToQt(std::string{name}));
        bar->addAction(action);
        if (name == ButtonsAtHand().front())
            ShowWords(*bar, *action);
    }
    window.addToolBar(bar);
    new RoomForBar(*bar, window);
}

} // namespace kestrova
