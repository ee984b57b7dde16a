#include "ui/widgets/picture_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QTextOption>

namespace kestrova
{

void PaintWords(QWidget& widget, const QString& words)
{
    QPainter painter(&widget);
    painter.fillRect(widget.rect(), widget.palette().color(QPalette::AlternateBase));
    QTextOption wrapped(Qt::AlignCenter);
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.setPen(widget.palette().color(QPalette::PlaceholderText));
    painter.drawText(QRectF(widget.rect().adjusted(8, 8, -8, -8)), words, wrapped);
}

void PictureView::Show(const QImage& picture)
{
    picture_ = picture;
    scaled_ = {};
    words_.clear();
    update();
}

void PictureView::ShowWords(const QString& words)
{
    picture_ = {};
    scaled_ = {};
    words_ = words;
    update();
}

void PictureView::paintEvent(QPaintEvent*)
{
    if (picture_.isNull())
        return PaintWords(*this, words_);
    // What is left of the room beside the picture is the window's own.
    QPainter painter(this);
    const qreal scale = devicePixelRatioF();
    const QSize room = size() * scale;
    const QSize fitting = picture_.size().scaled(room, Qt::KeepAspectRatio);
    if (scaled_.size() != fitting) {
        scaled_ = QPixmap::fromImage(
            picture_.scaled(fitting, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        scaled_.setDevicePixelRatio(scale);
    }
    const QSizeF shown = QSizeF(fitting) / scale;
    painter.drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2),
                       scaled_);
}

void PictureView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        menuWanted(event->globalPosition().toPoint());
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        opened();
}

} // namespace kestrova
