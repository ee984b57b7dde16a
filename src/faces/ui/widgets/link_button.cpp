#include "ui/widgets/link_button.h"

#include "ui/widgets/qt_text.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QToolTip>

namespace kestrova
{

QColor LinkColour(const QPalette& palette, QPalette::ColorRole ground)
{
    constexpr int dark = 128;
    constexpr int readable = 190;
    QColor link = palette.color(QPalette::Link);
    if (palette.color(ground).lightness() < dark && link.lightness() < readable)
        link.setHsl(link.hslHue(), link.hslSaturation(), readable);
    return link;
}

LinkButton::LinkButton(QWidget* parent) : QAbstractButton(parent)
{
    QSizePolicy policy{QSizePolicy::Ignored, QSizePolicy::Fixed};
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    Show({}, {});
}

void LinkButton::Show(const QString& words, const QString& tip)
{
    words_ = words;
    setVisible(!words.isEmpty());
    setAccessibleName(words);
    setAccessibleDescription(tip);
    setToolTip(tip.isEmpty() ? QString{} : PlainTip(tip));
    setFocusPolicy(tip.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
    setCursor(tip.isEmpty() ? Qt::ArrowCursor : Qt::PointingHandCursor);
    update();
}

QSize LinkButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(words_) + 2, fontMetrics().lineSpacing() + 2};
}

QSize LinkButton::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 4, sizeHint().height()};
}

QString LinkButton::Shown() const
{
    return fontMetrics().elidedText(words_, Qt::ElideRight, width() - 2);
}

bool LinkButton::hitButton(const QPoint& place) const
{
    // Beside the words is nothing to press.
    const QRect words(0, 0, fontMetrics().horizontalAdvance(Shown()) + 2, height());
    return Leads() && rect().contains(place) &&
           QStyle::visualRect(layoutDirection(), rect(), words).contains(place);
}

bool LinkButton::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty())
        return QAbstractButton::event(event);
    if (Shown() != words_)
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainTip(words_), this);
    return true;
}

void LinkButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect room = rect().adjusted(1, 0, -1, 0);
    if (Leads()) {
        QFont font = painter.font();
        font.setUnderline(true);
        painter.setFont(font);
        painter.setPen(LinkColour(palette(), QPalette::Window));
    } else {
        painter.setPen(palette().color(QPalette::WindowText));
    }
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, Shown());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

} // namespace kestrova
