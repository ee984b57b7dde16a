#include "ui/widgets/icons.h"

#include "core/files.h"
#include "platform/places.h"
#include "ui/desktop/file_names.h"
#include "ui/widgets/qt_text.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace kestrova
{

namespace
{

/// In a square of 16 by 16.
QPainterPath ShapeOf(Drawing drawing)
{
    QPainterPath shape;
    switch (drawing) {
    case Drawing::Play:
        shape.moveTo(4, 2);
        shape.lineTo(14, 8);
        shape.lineTo(4, 14);
        shape.closeSubpath();
        break;
    case Drawing::Search:
    case Drawing::Zoom:
        shape.addEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
        shape.moveTo(10, 10);
        shape.lineTo(14, 14);
        if (drawing == Drawing::Zoom) {
            shape.moveTo(4.5, 6.5);
            shape.lineTo(8.5, 6.5);
            shape.moveTo(6.5, 4.5);
            shape.lineTo(6.5, 8.5);
        }
        break;
    case Drawing::Previous:
        shape.moveTo(10.5, 3);
        shape.lineTo(5.5, 8);
        shape.lineTo(10.5, 13);
        break;
    case Drawing::Next:
        shape.moveTo(5.5, 3);
        shape.lineTo(10.5, 8);
        shape.lineTo(5.5, 13);
        break;
    case Drawing::Here:
        shape.addEllipse(QPointF(8, 8), 4, 4);
        break;
    }
    return shape;
}

class DrawnEngine : public QIconEngine
{
public:
    explicit DrawnEngine(Drawing drawing) : drawing_(drawing) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const bool filled = drawing_ == Drawing::Play || drawing_ == Drawing::Here;
        const auto role = mode == QIcon::Selected     ? QPalette::HighlightedText
                          : drawing_ == Drawing::Here ? QPalette::Highlight
                                                      : QPalette::ButtonText;
        const QColor colour = QGuiApplication::palette().color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, role);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 16.0, rect.height() / 16.0);
        if (filled)
            painter->fillPath(ShapeOf(drawing_), colour);
        else
            painter->strokePath(ShapeOf(drawing_),
                                QPen(colour, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new DrawnEngine(drawing_); }

private:
    Drawing drawing_;
};

} // namespace

QIcon DrawnIcon(Drawing drawing)
{
    return QIcon(new DrawnEngine(drawing));
}

QIcon ProgramIcon()
{
    const Path file = platform::ResourceFolder() / OnDisk::FileNameAppIcon;
    const QIcon icon = FileExists(file) ? QIcon(PathToQt(file)) : QIcon();
    return icon.pixmap(16).isNull() ? DrawnIcon(Drawing::Play) : icon;
}

} // namespace kestrova
