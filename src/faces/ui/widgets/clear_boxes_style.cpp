#include "ui/widgets/clear_boxes_style.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <QStyleOption>

#include <cstdlib>

namespace kestrova
{

namespace
{

/// How much of the text's colour an outline has.
constexpr float outlineShare = 0.6F;
constexpr float disabledShare = 0.3F;

bool IsDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

/// Whether frames are seen neither by their own colour nor by that of what they hold.
bool HidesFrames(const QPalette& palette)
{
    constexpr int leastDifference = 10;
    const int window = palette.color(QPalette::Window).lightness();
    const int base = palette.color(QPalette::Base).lightness();
    return IsDark(palette) && std::abs(window - base) < leastDifference;
}

/// An outline in the text's colour; what has the keyboard has one of its own.
void Outline(const QStyleOption& option, QPainter& painter)
{
    // Fusion shows the keyboard by an edge of its own, on other controls than lines once Tab was
    // pressed.
    const bool isLine = qstyleoption_cast<const QStyleOptionFrame*>(&option) != nullptr;
    const bool hasEdge = option.state.testFlag(QStyle::State_HasFocus) &&
                         (isLine || option.state.testFlag(QStyle::State_KeyboardFocusChange));
    if (!HidesFrames(option.palette) || hasEdge)
        return;
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    if (button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton))
        return;
    QColor outline = option.palette.color(QPalette::WindowText);
    outline.setAlphaF(option.state.testFlag(QStyle::State_Enabled) ? outlineShare : disabledShare);
    painter.save();
    painter.setPen(outline);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace

ClearBoxesStyle::ClearBoxesStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ClearBoxesStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                    QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    // Fusion outlines the button that Enter means as it does the one that has the keyboard.
    if (element == PE_PanelButtonCommand && option->state.testFlag(State_HasFocus) &&
        option->state.testFlag(State_KeyboardFocusChange)) {
        painter->save();
        painter->setPen(option->palette.color(QPalette::Highlight));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(3, 3, -4, -4));
        painter->restore();
    }
    if (element == PE_FrameLineEdit || element == PE_PanelButtonCommand ||
        element == PE_FrameGroupBox)
        return Outline(*option, *painter);
    const bool box = element == PE_IndicatorCheckBox || element == PE_FrameMenu;
    if ((!box && element != PE_IndicatorRadioButton) || !IsDark(option->palette))
        return;
    QColor outline = option->palette.color(QPalette::WindowText);
    outline.setAlphaF(option->state.testFlag(State_Enabled) ? outlineShare : disabledShare);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, !box);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    const QRect edge = option->rect.adjusted(0, 0, -1, -1);
    if (box)
        painter->drawRect(edge);
    else
        painter->drawEllipse(edge);
    painter->restore();
}

void ClearBoxesStyle::drawControl(ControlElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    const auto* area = qobject_cast<const QAbstractScrollArea*>(widget);
    if (element == CE_ProgressBarGroove ||
        (element == CE_ShapedFrame && area != nullptr && area->frameShape() != QFrame::NoFrame))
        Outline(*option, *painter);
    if (element != CE_ShapedFrame || !option->state.testFlag(State_HasFocus) || area == nullptr)
        return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void ClearBoxesStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                         QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox)
        Outline(*option, *painter);
}

int ClearBoxesStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                               QStyleHintReturn* answer) const
{
    return hint == SH_ItemView_ActivateItemOnSingleClick
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, answer);
}

void ClearBoxesStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractScrollArea*>(widget) != nullptr)
        widget->installEventFilter(this);
}

bool ClearBoxesStyle::eventFilter(QObject* object, QEvent* event)
{
    // Such an area paints only its inside anew when the keyboard comes and goes.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        if (auto* area = qobject_cast<QAbstractScrollArea*>(object))
            area->update();
    return QProxyStyle::eventFilter(object, event);
}

} // namespace kestrova
