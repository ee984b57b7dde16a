#include "ui/widgets/stars_box.h"

#include "ui/widgets/qt_text.h"
#include "words/level_page.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrova
{

namespace
{

constexpr int starsFrame = 2;

/// A star with five points in a square of that side.
QPainterPath StarIn(const QRectF& square)
{
    constexpr int corners = 2 * mostStars;
    constexpr double inner = 0.42;
    QPainterPath star;
    const double radius = square.width() / 2;
    for (int i = 0; i < corners; ++i) {
        const double angle = std::numbers::pi * (2.0 * i / corners - 0.5);
        const double far = i % 2 == 0 ? radius : radius * inner;
        const QPointF corner =
            square.center() + QPointF(std::cos(angle) * far, std::sin(angle) * far);
        if (i == 0)
            star.moveTo(corner);
        else
            star.lineTo(corner);
    }
    star.closeSubpath();
    return star;
}

} // namespace

void PaintStars(QPainter& painter, const QRectF& place, int stars, const QColor& colour)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1));
    const double side = place.height();
    for (int i = 0; i < mostStars; ++i) {
        painter.setBrush(i < stars ? QBrush(colour) : QBrush(Qt::NoBrush));
        painter.drawPath(StarIn(
            QRectF(place.left() + i * side, place.top(), side, side).adjusted(1, 1, -1, -1)));
    }
    painter.restore();
}

StarsBox::StarsBox(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(Words(Msg::StarsTip));
    setAccessibleName(Words(Msg::StarsName));
    SetStars(0);
}

void StarsBox::SetStars(int stars)
{
    stars_ = std::clamp(stars, 0, mostStars);
    setAccessibleDescription(stars_ == 0 ? Words(Msg::StarsNone)
                                         : Words(Msg::StarsGiven, {std::to_string(stars_)}));
    update();
}

QSize StarsBox::sizeHint() const
{
    const int side = fontMetrics().height() + 4;
    return {side * mostStars + 2 * starsFrame, side + 2 * starsFrame};
}

void StarsBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor given = palette().color(QPalette::WindowText);
    const QColor pointed = palette().color(QPalette::Highlight);
    PaintStars(painter, QRectF(rect()).adjusted(starsFrame, starsFrame, -starsFrame, -starsFrame),
               pointed_ > 0 ? pointed_ : stars_, pointed_ > 0 ? pointed : given);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

int StarsBox::StarAt(QPointF place) const
{
    const double side = height() - 2 * starsFrame;
    return std::clamp(1 + static_cast<int>((place.x() - starsFrame) / side), 1, mostStars);
}

void StarsBox::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    const int star = StarAt(event->position());
    pointed_ = 0;
    Choose(star == stars_ ? 0 : star);
}

void StarsBox::mouseMoveEvent(QMouseEvent* event)
{
    const int star = isEnabled() ? StarAt(event->position()) : 0;
    if (star != pointed_) {
        pointed_ = star;
        update();
    }
}

void StarsBox::leaveEvent(QEvent* event)
{
    pointed_ = 0;
    update();
    QWidget::leaveEvent(event);
}

void StarsBox::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key >= Qt::Key_0 && key <= Qt::Key_0 + mostStars)
        return Choose(key - Qt::Key_0);
    if (key == Qt::Key_Left || key == Qt::Key_Minus)
        return Choose(stars_ - 1);
    if (key == Qt::Key_Right || key == Qt::Key_Plus)
        return Choose(stars_ + 1);
    QWidget::keyPressEvent(event);
}

void StarsBox::Choose(int stars)
{
    const int before = stars_;
    SetStars(stars);
    if (stars_ != before)
        changed(stars_);
}

} // namespace kestrova
