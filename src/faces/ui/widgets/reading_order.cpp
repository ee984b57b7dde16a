#include "ui/widgets/reading_order.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <vector>

namespace kestrova
{

namespace
{

using Widgets = std::vector<QWidget*>;

void ReadWidget(QWidget& widget, Widgets& read);
void ReadLayout(QLayout& layout, Widgets& read);

void ReadItem(QLayoutItem& item, Widgets& read)
{
    if (QWidget* widget = item.widget())
        ReadWidget(*widget, read);
    else if (QLayout* layout = item.layout())
        ReadLayout(*layout, read);
}

struct Cell {
    QLayoutItem* item;
    int row;
    int lastRow;
    int column;
};

/// What ends above comes first; of what stands side by side, what is further left.
bool IsReadBefore(const Cell& one, const Cell& other)
{
    if (one.lastRow < other.row)
        return true;
    return one.row <= other.lastRow && one.column < other.column;
}

void ReadGrid(const QGridLayout& grid, Widgets& read)
{
    std::vector<Cell> cells;
    for (int i = 0; i < grid.count(); ++i) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid.getItemPosition(i, &row, &column, &rows, &columns);
        cells.push_back({grid.itemAt(i), row, row + rows - 1, column});
    }
    while (!cells.empty()) {
        const auto first = std::find_if(cells.begin(), cells.end(), [&](const Cell& cell) {
            return std::none_of(cells.begin(), cells.end(),
                                [&](const Cell& other) { return IsReadBefore(other, cell); });
        });
        const auto next = first == cells.end() ? cells.begin() : first;
        ReadItem(*next->item, read);
        cells.erase(next);
    }
}

void ReadLayout(QLayout& layout, Widgets& read)
{
    if (const auto* grid = qobject_cast<QGridLayout*>(&layout))
        return ReadGrid(*grid, read);
    for (int i = 0; i < layout.count(); ++i)
        ReadItem(*layout.itemAt(i), read);
}

void ReadWidget(QWidget& widget, Widgets& read)
{
    if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
        read.push_back(tabs->tabBar());
        for (int page = 0; page < tabs->count(); ++page)
            ReadWidget(*tabs->widget(page), read);
        return;
    }
    if ((widget.focusPolicy() & Qt::TabFocus) != 0)
        read.push_back(&widget);
    if (auto* stack = qobject_cast<QStackedWidget*>(&widget)) {
        for (int page = 0; page < stack->count(); ++page)
            ReadWidget(*stack->widget(page), read);
    } else if (auto* splitter = qobject_cast<QSplitter*>(&widget)) {
        for (int part = 0; part < splitter->count(); ++part)
            ReadWidget(*splitter->widget(part), read);
    } else if (auto* area = qobject_cast<QScrollArea*>(&widget)) {
        if (area->widget() != nullptr)
            ReadWidget(*area->widget(), read);
    } else if (QLayout* layout = widget.layout()) {
        ReadLayout(*layout, read);
    }
}

} // namespace

void SetReadingOrder(QWidget& window)
{
    Widgets read;
    ReadWidget(window, read);
    // The window itself is where the chain begins.
    std::erase(read, &window);
    for (std::size_t i = 1; i < read.size(); ++i)
        QWidget::setTabOrder(read[i - 1], read[i]);
    // Where the chain begins is not said by its order.
    if (!read.empty() && qobject_cast<QAbstractButton*>(read.front()) == nullptr)
        read.front()->setFocus();
}

} // namespace kestrova
