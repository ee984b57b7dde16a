#include "ui/widgets/drawn_shapes.h"

#include <QString>

#include <array>
#include <vector>

namespace kestrova
{

namespace
{

/// M x y: go there. L x y: a line. C and six numbers: a curve. O x y r: a circle. R x y w h: a
/// rectangle with round corners. =: back to where the line began.
struct Strokes {
    Drawing drawing;
    bool filled;
    const char* strokes;
};

constexpr Strokes drawings[] = {
    {Drawing::Play, true, "M 4 2 L 14 8 L 4 14 ="},
    {Drawing::Search, false, "O 6.5 6.5 4.5 M 10 10 L 14 14"},
    {Drawing::Previous, false, "M 10.5 3 L 5.5 8 L 10.5 13"},
    {Drawing::Next, false, "M 5.5 3 L 10.5 8 L 5.5 13"},
    {Drawing::Zoom, false, "O 6.5 6.5 4.5 M 10 10 L 14 14 M 4.5 6.5 L 8.5 6.5 M 6.5 4.5 L 6.5 8.5"},
    {Drawing::Here, true, "O 8 8 4"},
    {Drawing::Page, false,
     "M 3.5 2 L 9.5 2 L 12.5 5 L 12.5 14 L 3.5 14 = M 9.5 2 L 9.5 5 L 12.5 5"},
    {Drawing::Folder, false, "M 2 4 L 6 4 L 7.5 5.5 L 14 5.5 L 14 13 L 2 13 ="},
    {Drawing::Save, false,
     "M 8 2 L 8 10 M 4.5 7 L 8 10.5 L 11.5 7 M 2.5 11 L 2.5 14 L 13.5 14 L 13.5 11"},
    {Drawing::Leave, false,
     "M 9 2.5 L 3 2.5 L 3 13.5 L 9 13.5 M 6.5 8 L 14 8 M 11 5 L 14 8 L 11 11"},
    {Drawing::Add, false, "M 8 3 L 8 13 M 3 8 L 13 8"},
    {Drawing::Pencil, false, "M 2.5 13.5 L 3.5 10 L 10.5 3 L 13 5.5 L 6 12.5 = M 9 4.5 L 11.5 7"},
    {Drawing::Bin, false,
     "M 2.5 4 L 13.5 4 M 6 4 L 6 2 L 10 2 L 10 4 M 4 4 L 4.7 14 L 11.3 14 L 12 4 M 8 6.5 L 8 "
     "11.5"},
    {Drawing::PackOut, false,
     "M 8 10 L 8 2.5 M 5 5.5 L 8 2.5 L 11 5.5 M 4 8 L 2.5 8 L 2.5 14 L 13.5 14 L 13.5 8 L 12 "
     "8"},
    {Drawing::Undo, false,
     "M 6 3 L 2.5 6.5 L 6 10 M 2.5 6.5 L 10 6.5 C 15 6.5 15 13.5 10 13.5 L 7 13.5"},
    {Drawing::Redo, false,
     "M 10 3 L 13.5 6.5 L 10 10 M 13.5 6.5 L 6 6.5 C 1 6.5 1 13.5 6 13.5 L 9 13.5"},
    {Drawing::Globe, false,
     "O 8 8 6 M 2 8 L 14 8 M 8 2 C 4.5 5 4.5 11 8 14 M 8 2 C 11.5 5 11.5 11 8 14"},
    {Drawing::PutAway, false,
     "R 2 9 12 5 M 6.5 11.5 L 9.5 11.5 M 8 1.5 L 8 6.5 M 5.5 4.5 L 8 7 L 10.5 4.5"},
    {Drawing::BringBack, false,
     "R 2 9 12 5 M 6.5 11.5 L 9.5 11.5 M 8 7 L 8 2 M 5.5 4 L 8 1.5 L 10.5 4"},
    {Drawing::Clock, false, "O 8 8 6 M 8 4.5 L 8 8 L 10.5 9.5"},
    {Drawing::Camera, false,
     "M 2 5 L 5 5 L 6.2 3 L 9.8 3 L 11 5 L 14 5 L 14 13 L 2 13 = O 8 8.8 2.4"},
    {Drawing::Disc, false, "O 8 8 6 O 8 8 1.6"},
    {Drawing::Gate, false,
     "M 2.5 14 L 2.5 8 C 2.5 0.5 13.5 0.5 13.5 8 L 13.5 14 L 10.5 14 L 10.5 8 C 10.5 4.5 5.5 "
     "4.5 "
     "5.5 8 "
     "L 5.5 14 ="},
    {Drawing::Parcel, false,
     "M 2.5 5 L 8 2 L 13.5 5 L 13.5 11 L 8 14 L 2.5 11 = M 2.5 5 L 8 8 L 13.5 5 "
     "M 8 8 L 8 14"},
    {Drawing::Sliders, false,
     "M 2 4 L 8 4 M 12 4 L 14 4 O 10 4 1.7 M 2 12 L 4 12 M 8 12 L 14 12 O 6 12 1.7"},
    {Drawing::Question, false,
     "O 8 8 6.3 M 6 6.5 C 6 3.8 10 3.8 10 6.5 C 10 8 8 8 8 9.6 M 8 11.7 L 8 11.8"},
    {Drawing::Rows, false, "M 2.5 3.5 L 13.5 3.5 M 2.5 8 L 13.5 8 M 2.5 12.5 L 13.5 12.5"},
    {Drawing::Covers, false,
     "M 2.5 2.5 L 6.5 2.5 L 6.5 6.5 L 2.5 6.5 = M 9.5 2.5 L 13.5 2.5 L 13.5 6.5 L 9.5 6.5 = "
     "M 2.5 9.5 L 6.5 9.5 L 6.5 13.5 L 2.5 13.5 = M 9.5 9.5 L 13.5 9.5 L 13.5 13.5 L 9.5 13.5 ="},
};

QPainterPath PathOf(const char* strokes)
{
    QPainterPath path;
    const QStringList words = QString::fromLatin1(strokes).split(QLatin1Char(' '));
    qsizetype at = 0;
    const auto number = [&] { return words.value(at++).toDouble(); };
    const auto point = [&] {
        const double x = number();
        return QPointF(x, number());
    };
    while (at < words.size()) {
        const QString& step = words[at++];
        if (step == QLatin1String("M")) {
            path.moveTo(point());
        } else if (step == QLatin1String("L")) {
            path.lineTo(point());
        } else if (step == QLatin1String("C")) {
            const QPointF first = point();
            const QPointF second = point();
            path.cubicTo(first, second, point());
        } else if (step == QLatin1String("O")) {
            const QPointF middle = point();
            const double radius = number();
            path.addEllipse(middle, radius, radius);
        } else if (step == QLatin1String("R")) {
            const QPointF corner = point();
            const QPointF size = point();
            path.addRoundedRect(QRectF(corner, QSizeF(size.x(), size.y())), 1.2, 1.2);
        } else {
            path.closeSubpath();
        }
    }
    return path;
}

} // namespace

const DrawnShape& ShapeOf(Drawing drawing)
{
    static const std::vector<DrawnShape> shapes = [] {
        std::vector<DrawnShape> made(std::size(drawings));
        for (const Strokes& row : drawings)
            made[static_cast<std::size_t>(row.drawing)] = {PathOf(row.strokes), row.filled};
        return made;
    }();
    return shapes[static_cast<std::size_t>(drawing)];
}

} // namespace kestrova
