#include "ui/widgets/icons.h"

#include "core/files.h"
#include "platform/places.h"
#include "ui/desktop/file_names.h"
#include "ui/widgets/drawn_shapes.h"
#include "ui/widgets/qt_text.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace kestrova
{

namespace
{

/// Back is where one has read from.
bool PointsBackOrOn(Drawing drawing)
{
    return drawing == Drawing::Previous || drawing == Drawing::Next || drawing == Drawing::Undo ||
           drawing == Drawing::Redo;
}

class DrawnEngine : public QIconEngine
{
public:
    explicit DrawnEngine(Drawing drawing) : drawing_(drawing) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const DrawnShape& shape = ShapeOf(drawing_);
        const auto role = mode == QIcon::Selected     ? QPalette::HighlightedText
                          : drawing_ == Drawing::Here ? QPalette::Highlight
                                                      : QPalette::ButtonText;
        const QColor colour = QGuiApplication::palette().color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, role);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        if (QGuiApplication::isRightToLeft() && PointsBackOrOn(drawing_))
            painter->setTransform(QTransform(-1, 0, 0, 1, rect.width(), 0), true);
        painter->scale(rect.width() / 16.0, rect.height() / 16.0);
        constexpr double thick = 1.8; // of the few lines of a button that stands alone
        constexpr double fine = 1.3;
        const double width = drawing_ < Drawing::Page ? thick : fine;
        if (shape.filled)
            painter->fillPath(shape.path, colour);
        else
            painter->strokePath(shape.path,
                                QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
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
