#include "ui/widgets/zoom_view.h"

#include "ui/widgets/picture_view.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kestrova
{

namespace
{

constexpr double mostZoom = 16;
constexpr double wheelStep = 1.25;
constexpr double wheelNotch = 120;

} // namespace

ZoomView::ZoomView(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ZoomView::Show(const QImage& picture)
{
    picture_ = picture;
    words_.clear();
    Fit();
}

void ZoomView::ShowWords(const QString& words)
{
    picture_ = {};
    words_ = words;
    Fit();
}

void ZoomView::Fit()
{
    fitted_ = {};
    zoom_ = 1;
    centre_ = QPointF(picture_.width(), picture_.height()) / 2;
    unsetCursor();
    update();
}

double ZoomView::FitScale() const
{
    if (picture_.isNull())
        return 1;
    return std::min(static_cast<double>(width()) / picture_.width(),
                    static_cast<double>(height()) / picture_.height());
}

double ZoomView::Scale() const
{
    return FitScale() * zoom_;
}

QRectF ZoomView::PictureRect() const
{
    const double scale = Scale();
    return {QPointF(width(), height()) / 2 - centre_ * scale, QSizeF(picture_.size()) * scale};
}

void ZoomView::Zoom(double factor, QPointF place)
{
    if (picture_.isNull())
        return;
    const QPointF middle = QPointF(width(), height()) / 2;
    const QPointF held = centre_ + (place - middle) / Scale();
    zoom_ = std::clamp(zoom_ * factor, 1.0, mostZoom);
    centre_ = held - (place - middle) / Scale();
    KeepInside();
    if (zoom_ > 1)
        setCursor(Qt::OpenHandCursor);
    else
        unsetCursor();
    update();
}

/// The room stays filled with picture as far as the picture goes.
void ZoomView::KeepInside()
{
    const QSizeF seen = QSizeF(size()) / Scale();
    const auto kept = [](double centre, double room, double whole) {
        return room >= whole ? whole / 2 : std::clamp(centre, room / 2, whole - room / 2);
    };
    centre_ = {kept(centre_.x(), seen.width(), picture_.width()),
               kept(centre_.y(), seen.height(), picture_.height())};
}

void ZoomView::paintEvent(QPaintEvent*)
{
    if (picture_.isNull())
        return PaintWords(*this, words_);
    // What is left of the room beside the picture is the window's own.
    QPainter painter(this);
    const QRectF place = PictureRect();
    if (zoom_ > 1) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, picture_);
        return;
    }
    const QSize points = (place.size() * devicePixelRatioF()).toSize();
    if (fitted_.size() != points) {
        fitted_ = QPixmap::fromImage(
            picture_.scaled(points, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        fitted_.setDevicePixelRatio(devicePixelRatioF());
    }
    painter.drawPixmap(place.topLeft(), fitted_);
}

void ZoomView::wheelEvent(QWheelEvent* event)
{
    Zoom(std::pow(wheelStep, event->angleDelta().y() / wheelNotch), event->position());
    event->accept();
}

void ZoomView::mousePressEvent(QMouseEvent* event)
{
    dragged_ = event->position();
    if (zoom_ > 1)
        setCursor(Qt::ClosedHandCursor);
}

void ZoomView::mouseMoveEvent(QMouseEvent* event)
{
    if (zoom_ <= 1 || !(event->buttons() & Qt::LeftButton))
        return;
    centre_ -= (event->position() - dragged_) / Scale();
    dragged_ = event->position();
    KeepInside();
    update();
}

void ZoomView::mouseReleaseEvent(QMouseEvent*)
{
    if (zoom_ > 1)
        setCursor(Qt::OpenHandCursor);
}

void ZoomView::resizeEvent(QResizeEvent*)
{
    if (!picture_.isNull())
        KeepInside();
}

} // namespace kestrova
