#include "ui/widgets/clear_boxes_style.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <QStyleOption>

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

} // namespace

ClearBoxesStyle::ClearBoxesStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ClearBoxesStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                    QPainter* painter, const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool box = element == PE_IndicatorCheckBox;
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
    if (element != CE_ShapedFrame || !option->state.testFlag(State_HasFocus) ||
        qobject_cast<const QAbstractScrollArea*>(widget) == nullptr)
        return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
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
