#include "ui/widgets/rows_model.h"

#include "ui/widgets/qt_text.h"

namespace kestrova
{

RowsModel::RowsModel(std::vector<Message> heads, QObject* parent)
    : QAbstractTableModel(parent), heads_(std::move(heads))
{
}

void RowsModel::Refresh()
{
    beginResetModel();
    endResetModel();
}

int RowsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(Count());
}

int RowsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(heads_.size());
}

QVariant RowsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(row, index.column());
    case Qt::ToolTipRole:
        return PlainTip(TipOf(row, index.column()));
    case Qt::TextAlignmentRole:
        return HoldsNumbers(index.column()) ? QVariant{Qt::AlignRight | Qt::AlignVCenter}
                                            : QVariant{};
    default:
        return {};
    }
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return Words(heads_[static_cast<std::size_t>(section)]);
}

} // namespace kestrova
