#include "ui/widgets/wrapping_row.h"

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
    return index >= 0 && index < count() ? items_.takeAt(index) : nullptr;
}

/// Tells of each item's place, and answers the height of all.
template <class Place> int WrappingRow::Arrange(const QRect& room, Place place) const
{
    const int gap = std::max(spacing(), 0);
    int x = room.left();
    int y = room.top();
    int height = 0;
    for (QLayoutItem* item : items_) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint().boundedTo({room.width(), QLAYOUTSIZE_MAX});
        if (x > room.left() && x + size.width() > room.right() + 1) {
            x = room.left();
            y += height + gap;
            height = 0;
        }
        place(*item, QRect({x, y}, size));
        x += size.width() + gap;
        height = std::max(height, size.height());
    }
    return y + height - room.top();
}

int WrappingRow::heightForWidth(int width) const
{
    return Arrange({0, 0, width, 0}, [](QLayoutItem&, const QRect&) {});
}

QSize WrappingRow::sizeHint() const
{
    QSize size;
    Arrange({0, 0, QLAYOUTSIZE_MAX, 0}, [&](QLayoutItem&, const QRect& place) {
        size = size.expandedTo({place.right() + 1, place.bottom() + 1});
    });
    return size;
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
    Arrange(room, [](QLayoutItem& item, const QRect& place) { item.setGeometry(place); });
}

} // namespace kestrova
