#include "ui/widgets/fitted_columns.h"

#include <QEvent>
#include <QHeaderView>
#include <QTreeView>

#include <algorithm>

namespace kestrova
{

FittedColumns::FittedColumns(QTreeView& list, std::vector<int> order, int stretched)
    : QObject(&list), list_(list), order_(std::move(order)), stretched_(stretched)
{
    list.header()->setStretchLastSection(false);
    list.header()->setSectionResizeMode(stretched, QHeaderView::Stretch);
    list.viewport()->installEventFilter(this);
}

/// Of the one that has what is left a few letters are enough.
int FittedColumns::WidthOf(int column) const
{
    constexpr int fewestLetters = 10;
    if (column == stretched_)
        return std::max(fewestLetters * list_.fontMetrics().averageCharWidth(),
                        list_.header()->sectionSizeHint(column));
    return list_.columnWidth(column);
}

void FittedColumns::Fit()
{
    for (const int column : order_) {
        list_.setColumnHidden(column, false);
        if (column != stretched_)
            list_.resizeColumnToContents(column);
    }
    int room = list_.viewport()->width();
    bool fits = true;
    for (const int column : order_) {
        fits = fits && (column == order_.front() || WidthOf(column) <= room);
        room -= WidthOf(column);
        list_.setColumnHidden(column, !fits);
    }
}

bool FittedColumns::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        Fit();
    return false;
}

} // namespace kestrova
