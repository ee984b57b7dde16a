#include "ui/widgets/input_gate.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>

namespace kestrova
{

namespace
{

InputGate* current = nullptr;

bool IsInput(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    case QEvent::Close:
        // A dialog that accepts itself at the end of its work is closed by nobody's hand.
        return event.spontaneous();
    default:
        return false;
    }
}

/// What a popup and a dialog were opened from. The list of completions under a line of text has no
/// parent, only the line that it works for.
const QObject* OpenerOf(const QObject* target)
{
    if (target->parent() != nullptr || !target->isWidgetType())
        return target->parent();
    return static_cast<const QWidget*>(target)->focusProxy();
}

bool Belongs(const QObject* target, const QWidget* window)
{
    if (window == nullptr)
        return false;
    for (; target != nullptr; target = OpenerOf(target))
        if (target == window)
            return true;
    return false;
}

} // namespace

InputGate::InputGate(const Running& running) : running_(running)
{
    current = this;
    qApp->installEventFilter(this);
}

InputGate::~InputGate()
{
    current = nullptr;
}

InputGate* InputGate::Current()
{
    return current;
}

InputGate::Admission::Admission(QWidget& window)
{
    if (current != nullptr)
        current->admitted_.push_back({&window, current->running_.operations});
}

InputGate::Admission::~Admission()
{
    if (current != nullptr && !current->admitted_.empty())
        current->admitted_.pop_back();
}

void InputGate::AdmitAlways(QWidget& window)
{
    std::erase_if(always_, [](const QPointer<QWidget>& gone) { return gone.isNull(); });
    always_.emplace_back(&window);
}

bool InputGate::Waits() const
{
    return running_.operations == 0 ||
           (!admitted_.empty() && admitted_.back().operations == running_.operations);
}

bool InputGate::LetsThrough(const QObject* target) const
{
    if (running_.operations == 0)
        return true;
    if (!admitted_.empty() && admitted_.back().operations == running_.operations &&
        Belongs(target, admitted_.back().window))
        return true;
    return std::any_of(always_.begin(), always_.end(),
                       [&](const auto& window) { return Belongs(target, window); });
}

bool InputGate::eventFilter(QObject* object, QEvent* event)
{
    // What the window system sends to a whole window comes by again for the widget that it is for.
    if (!IsInput(*event) || object->isWindowType() || object == qApp || LetsThrough(object))
        return false;
    event->ignore();
    return true;
}

} // namespace kestrova
