#pragma once

#include "library/level_list.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>

namespace kestrova
{

/// The rows of the list of levels; with a search text only those that hold it.
class LevelModel : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    enum Role { CurrentRole = Qt::UserRole };

    /// `current`: the level that stands in the Level Editor's folder.
    void SetRows(std::vector<ListRow> rows, LevelCode current);
    void SetSearch(const std::string& text);

    [[nodiscard]] const std::vector<ListRow>& Rows() const { return rows_; }
    /// Place of a level in all rows; -1 when it is not there.
    [[nodiscard]] std::ptrdiff_t RowOf(LevelCode code) const;
    /// Place of a level among the shown ones; -1 when it is hidden or not there.
    [[nodiscard]] int ShownRowOf(LevelCode code) const;
    [[nodiscard]] LevelCode CodeAt(int shownRow) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    void Filter();

    std::vector<ListRow> rows_;
    std::vector<std::string> folded_; ///< of the rows; filled by the first search
    std::vector<int> shown_;
    std::string search_; ///< folded
    LevelCode current_ = -1;
};

/// Marks the level that stands in the Level Editor's folder, and tells the whole name of one that
/// is too long for the list.
class LevelDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace kestrova
