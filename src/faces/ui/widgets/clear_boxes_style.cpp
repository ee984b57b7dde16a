#include "ui/widgets/clear_boxes_style.h"

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

} // namespace kestrova
