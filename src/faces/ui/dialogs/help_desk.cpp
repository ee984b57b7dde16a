#include "ui/dialogs/help_desk.h"

#include "help/help_file.h"
#include "platform/places.h"
#include "ui/dialogs/dialog_testo.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

namespace kestrova
{

namespace
{

HelpDesk* theDesk = nullptr;
constexpr const char* tagProperty = "helpTag";

/// The tag of the item that is lit in an open menu, and of the window below when it has none.
HelpTag TagOfMenu(const QMenu& menu)
{
    const QAction* lit = menu.activeAction();
    const HelpTag tag = lit == nullptr ? HelpTag::None : HelpTagOf(FromQt(lit->objectName()));
    return tag == HelpTag::None ? HelpTagAt(&menu) : tag;
}

void CloseMenus()
{
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            return;
    }
}

} // namespace

HelpTag HelpTagAt(const QWidget* control)
{
    for (; control != nullptr; control = control->parentWidget()) {
        const HelpTag own = static_cast<HelpTag>(control->property(tagProperty).toInt());
        const HelpTag named = own != HelpTag::None ? own : HelpTagOf(FromQt(control->objectName()));
        if (named != HelpTag::None)
            return named;
    }
    return HelpTag::Beginning;
}

void SetHelpTag(QWidget& control, HelpTag tag)
{
    control.setProperty(tagProperty, static_cast<int>(tag));
}

QPushButton* HelpButton(QWidget* parent)
{
    QPushButton* button = NamedButton(parent, "Pul_Help");
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, button, [button] {
        if (theDesk != nullptr)
            theDesk->Show(HelpTagAt(button), button->window());
    });
    return button;
}

HelpDesk::HelpDesk(Session& session) : session_(session)
{
    theDesk = this;
    qApp->installEventFilter(this);
}

HelpDesk::~HelpDesk()
{
    theDesk = nullptr;
}

HelpDesk* HelpDesk::Current()
{
    return theDesk;
}

void HelpDesk::Show(HelpTag tag, QWidget* parent)
{
    if (auto* open = dynamic_cast<HelpDialog*>(parent))
        return open->Jump(TagText(tag));
    const auto load = [this] {
        return LoadHelp(session_.host, session_.Folders(), platform::ResourceFolder());
    };
    auto help = load();
    if (!help)
        return;
    HelpDialog dialog{session_, std::move(*help), TagText(tag), load, parent};
    const InputGate::Admission admission{dialog};
    dialog.exec();
}

bool HelpDesk::eventFilter(QObject* object, QEvent* event)
{
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!key || !object->isWidgetType())
        return false;
    const auto* pressed = static_cast<const QKeyEvent*>(event);
    if (pressed->key() != Qt::Key_F1 || pressed->modifiers() != Qt::NoModifier)
        return false;
    event->accept();
    // A menu's item would take the key away from the control that it is pressed in.
    if (event->type() == QEvent::ShortcutOverride || pressed->isAutoRepeat())
        return true;
    if (const InputGate* gate = InputGate::Current(); gate != nullptr && !gate->Waits())
        return true;
    const QPointer<QWidget> at = static_cast<QWidget*>(object);
    const auto* menu = qobject_cast<const QMenu*>(at);
    const HelpTag tag = menu != nullptr ? TagOfMenu(*menu) : HelpTagAt(at);
    // Not from inside the key's own event, which menus and boxes are still at work on.
    QTimer::singleShot(0, this, [this, tag, at, fromMenu = menu != nullptr] {
        CloseMenus();
        QWidget* window = QApplication::activeModalWidget();
        if (window == nullptr && !at.isNull())
            window = fromMenu ? QApplication::activeWindow() : at->window();
        Show(tag, window);
    });
    return true;
}

} // namespace kestrova
