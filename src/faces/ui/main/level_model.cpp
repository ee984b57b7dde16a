#include "ui/main/level_model.h"

#include "core/text.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/qt_text.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

#include <algorithm>
#include <numeric>

namespace kestrova
{

void LevelModel::SetRows(std::vector<ListRow> rows, LevelCode current)
{
    beginResetModel();
    rows_ = std::move(rows);
    folded_.clear();
    current_ = current;
    Filter();
    endResetModel();
}

void LevelModel::SetSearch(const std::string& text)
{
    const std::string folded = FoldCase(Trim(text));
    if (folded == search_)
        return;
    beginResetModel();
    search_ = folded;
    Filter();
    endResetModel();
}

void LevelModel::Filter()
{
    shown_.clear();
    if (search_.empty()) {
        shown_.resize(rows_.size());
        std::iota(shown_.begin(), shown_.end(), 0);
        return;
    }
    if (folded_.empty())
        for (const ListRow& row : rows_)
            folded_.push_back(FoldCase(row.text));
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (folded_[i].find(search_) != std::string::npos)
            shown_.push_back(static_cast<int>(i));
}

std::ptrdiff_t LevelModel::RowOf(LevelCode code) const
{
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [&](const ListRow& row) { return row.code == code; });
    return found == rows_.end() ? -1 : found - rows_.begin();
}

int LevelModel::ShownRowOf(LevelCode code) const
{
    const auto found = std::lower_bound(shown_.begin(), shown_.end(), RowOf(code));
    return found == shown_.end() || CodeAt(static_cast<int>(found - shown_.begin())) != code
               ? -1
               : static_cast<int>(found - shown_.begin());
}

LevelCode LevelModel::CodeAt(int shownRow) const
{
    return rows_[static_cast<std::size_t>(shown_[static_cast<std::size_t>(shownRow)])].code;
}

int LevelModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant LevelModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ListRow& row =
        rows_[static_cast<std::size_t>(shown_[static_cast<std::size_t>(index.row())])];
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(row.text);
    case CurrentRole:
        return row.code == current_;
    default:
        return {};
    }
}

void LevelDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // Room for the mark beside every row, so that no name jumps when the mark moves.
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = QSize(12, 12);
    if (index.data(LevelModel::CurrentRole).toBool()) {
        static const QIcon mark = DrawnIcon(Drawing::Here);
        option->icon = mark;
        option->font.setBold(true);
    }
}

bool LevelDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                              const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const bool cut = sizeHint(option, index).width() > view->viewport()->width();
    if (cut)
        QToolTip::showText(event->globalPos(), index.data().toString().toHtmlEscaped(), view);
    else
        QToolTip::hideText();
    return true;
}

} // namespace kestrova
