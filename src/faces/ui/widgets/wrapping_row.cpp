#include "ui/widgets/wrapping_row.h"

#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace kestrova
{

WrappingRow::~WrappingRow()
{
    qDeleteAll(items_);
}

QLayoutItem* WrappingRow::takeAt(int index)
{
    if (index < 0 || index >= count())
        return nullptr;
    if (index < stretch_)
        --stretch_;
    return items_.takeAt(index);
}

void WrappingRow::AddStretch()
{
    stretch_ = items_.size();
}

int WrappingRow::Gap() const
{
    return std::max(spacing(), 0);
}

WrappingRow::Line WrappingRow::LineFrom(qsizetype first, int width) const
{
    Line line{first, {0, 0}};
    for (; line.end < items_.size(); ++line.end) {
        const QLayoutItem& item = *items_[line.end];
        if (item.isEmpty())
            continue;
        const QSize size = item.sizeHint();
        const int longer =
            line.size.isEmpty() ? size.width() : line.size.width() + Gap() + size.width();
        if (longer > width && !line.size.isEmpty())
            break;
        line.size = {longer, std::max(line.size.height(), size.height())};
    }
    line.size.setWidth(std::min(line.size.width(), width));
    return line;
}

/// Tells of each item's place, and answers the height of all.
template <class Place> int WrappingRow::Arrange(const QRect& room, Place place) const
{
    int y = room.top();
    for (qsizetype first = 0; first < items_.size();) {
        const Line line = LineFrom(first, room.width());
        int x = room.left();
        for (qsizetype i = first; i < line.end; ++i) {
            if (stretch_ >= 0 && i == std::max(stretch_, first))
                x += room.width() - line.size.width();
            if (items_[i]->isEmpty())
                continue;
            const QSize size = items_[i]->sizeHint().boundedTo({room.width(), QLAYOUTSIZE_MAX});
            place(*items_[i], QRect({x, y + (line.size.height() - size.height()) / 2}, size));
            x += size.width() + Gap();
        }
        y += line.size.height() + (line.size.isEmpty() ? 0 : Gap());
        first = line.end;
    }
    return std::max(y - Gap() - room.top(), 0);
}

int WrappingRow::heightForWidth(int width) const
{
    return Arrange({0, 0, width, 0}, [](QLayoutItem&, const QRect&) {});
}

QSize WrappingRow::sizeHint() const
{
    return LineFrom(0, QLAYOUTSIZE_MAX).size;
}

QSize WrappingRow::minimumSize() const
{
    QSize smallest;
    for (const QLayoutItem* item : items_)
        smallest = smallest.expandedTo(item->minimumSize());
    return smallest;
}

void WrappingRow::setGeometry(const QRect& room)
{
    QLayout::setGeometry(room);
    const Qt::LayoutDirection way = parentWidget()->layoutDirection();
    Arrange(room, [&](QLayoutItem& item, const QRect& place) {
        item.setGeometry(QStyle::visualRect(way, room, place));
    });
}

} // namespace kestrova
