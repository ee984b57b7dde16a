#include "ui/main/level_columns.h"

#include "ui/widgets/captions.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QMenu>
#include <QScopedValueRollback>
#include <QStyle>

#include <algorithm>

namespace kestrova
{

namespace
{

/// Widths in letters; that of the name is what it has before others are shown beside it.
constexpr int columnLetters[] = {44, 18, 13, 13, 11, 11, 13};
static_assert(std::size(columnLetters) == LevelModel::ColumnCount);
constexpr int narrowestLetters = 5;
/// For a name that gives way to columns of the person's own widths.
constexpr int narrowestName = 20;
constexpr int widestColumn = 2000;

} // namespace

LevelColumns::LevelColumns(LevelModel& model, QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setObjectName(QStringLiteral("Head_Levels"));
    setModel(&model);
    setSectionResizeMode(QHeaderView::Interactive);
    setSectionsMovable(true);
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(1);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setFocusPolicy(Qt::NoFocus); // the boxes and buttons above do the same for the keyboard
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QHeaderView::sectionClicked, this,
            [this](int column) { orderWanted(LevelModel::OrderOf(column)); });
    connect(this, &QHeaderView::sectionResized, this, &LevelColumns::TakeWidth);
    connect(this, &QHeaderView::sectionMoved, this, [this] {
        if (arranging_)
            return;
        Arrange(width_);
        changed();
    });
    connect(this, &QHeaderView::customContextMenuRequested, this,
            [this](QPoint place) { OpenMenu(mapToGlobal(place)); });
}

int LevelColumns::UsualWidth(int column) const
{
    return columnLetters[column] * (fontMetrics().averageCharWidth() + 1);
}

int LevelColumns::LeastOfName() const
{
    const bool own = std::any_of(std::begin(wishes_), std::end(wishes_),
                                 [](const Wish& wish) { return wish.width > 0; });
    return own ? narrowestName * (fontMetrics().averageCharWidth() + 1)
               : UsualWidth(LevelModel::NameColumn);
}

int LevelColumns::WidthOf(int column) const
{
    const int wish = wishes_[column].width;
    return wish == 0 ? UsualWidth(column)
                     : std::max(wish, narrowestLetters * fontMetrics().averageCharWidth());
}

void LevelColumns::Arrange(int width)
{
    const QScopedValueRollback<bool> own{arranging_, true};
    width_ = width;
    const int name = LeastOfName();
    int room = width - name;
    bool more = true;
    for (int place = 0; place < LevelModel::ColumnCount; ++place) {
        const int column = logicalIndex(place);
        if (column == LevelModel::NameColumn)
            continue;
        const bool wanted = !wishes_[column].hidden;
        more = more && (!wanted || room >= WidthOf(column));
        setSectionHidden(column, !wanted || !more);
        if (!wanted || !more)
            continue;
        resizeSection(column, WidthOf(column));
        room -= WidthOf(column);
    }
    // In a list that is narrower than that it has all there is.
    resizeSection(LevelModel::NameColumn, std::max(room + name, 1));
}

int LevelColumns::NextShown(int column) const
{
    for (int place = visualIndex(column) + 1; place < count(); ++place)
        if (!isSectionHidden(logicalIndex(place)))
            return logicalIndex(place);
    return -1;
}

/// The line between two columns was dragged: what one gets the other one gives.
void LevelColumns::TakeWidth(int column, int before, int now)
{
    if (arranging_ || before == 0 || now == 0) // one that is hidden or shown
        return;
    const auto smallest = [this](int one) {
        const int letters = one == LevelModel::NameColumn ? narrowestName : narrowestLetters;
        return letters * (fontMetrics().averageCharWidth() + 1);
    };
    if (const int next = NextShown(column); next >= 0) {
        const int most = sectionSize(next) - smallest(next);
        const int least = std::min(smallest(column) - before, 0);
        const int more = std::clamp(now - before, least, std::max(most, least));
        for (const auto& [one, width] :
             {std::pair{column, before + more}, std::pair{next, sectionSize(next) - more}})
            if (one != LevelModel::NameColumn)
                wishes_[one].width = width;
    }
    Arrange(width_);
    changed();
}

QRect LevelColumns::RectOf(int column, const QRect& row) const
{
    if (isSectionHidden(column))
        return {};
    const QRect place(row.left() + sectionPosition(column), row.top(), sectionSize(column),
                      row.height());
    return QStyle::visualRect(layoutDirection(), row, place);
}

void LevelColumns::ShowOrder(LibraryOrder order, bool turned)
{
    setSortIndicatorShown(false);
    for (int column = 0; column < LevelModel::ColumnCount; ++column)
        if (LevelModel::OrderOf(column) == order) {
            setSortIndicatorShown(true);
            const bool upwards = order == LibraryOrder::Name || order == LibraryOrder::Author;
            setSortIndicator(column, upwards != turned ? Qt::AscendingOrder : Qt::DescendingOrder);
        }
}

void LevelColumns::SetHidden(int column, bool hidden)
{
    wishes_[column].hidden = hidden;
    Arrange(width_);
    // One that is wanted now is seen now: where the others take the room it comes before them.
    if (!hidden && isSectionHidden(column)) {
        const QScopedValueRollback<bool> own{arranging_, true};
        const int from = visualIndex(column);
        const int name = visualIndex(LevelModel::NameColumn);
        moveSection(from, from > name ? name + 1 : name);
    }
    Arrange(width_);
    changed();
}

void LevelColumns::OpenMenu(QPoint place)
{
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnu_Columns"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int from = 0; from < LevelModel::ColumnCount; ++from) {
        const int column = logicalIndex(from);
        if (column == LevelModel::NameColumn)
            continue;
        QAction* action = menu->addAction(model()->headerData(column, Qt::Horizontal).toString());
        action->setCheckable(true);
        action->setChecked(!wishes_[column].hidden);
        connect(action, &QAction::triggered, this,
                [this, column](bool shown) { SetHidden(column, !shown); });
    }
    menu->addSeparator();
    connect(menu->addAction(Words(Msg::ColumnsUsual)), &QAction::triggered, this, [this] {
        Choose({});
        changed();
    });
    GiveLetters(*menu);
    menu->popup(place);
}

ChosenColumns LevelColumns::Chosen() const
{
    ChosenColumns columns;
    for (int place = 0; place < LevelModel::ColumnCount; ++place) {
        const int column = logicalIndex(place);
        columns.push_back({column, wishes_[column].width, wishes_[column].hidden});
    }
    return columns;
}

void LevelColumns::Choose(const ChosenColumns& columns)
{
    {
        const QScopedValueRollback<bool> own{arranging_, true};
        std::fill(std::begin(wishes_), std::end(wishes_), Wish{});
        for (int column = 0; column < LevelModel::ColumnCount; ++column)
            moveSection(visualIndex(column), column);
        int place = 0;
        for (const ChosenColumn& chosen : columns) {
            if (visualIndex(chosen.column) < place)
                continue; // it was named before
            moveSection(visualIndex(chosen.column), place++);
            wishes_[chosen.column] = {std::clamp(chosen.width, 0, widestColumn),
                                      chosen.hidden && chosen.column != LevelModel::NameColumn};
        }
    }
    Arrange(width_);
}

} // namespace kestrova
