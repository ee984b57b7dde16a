#pragma once

#include "editor/folder_comparison.h"

#include <QAbstractTableModel>

namespace kestrova
{

/// The shown rows of a comparison. A row's texts are made when it is painted, however long the list
/// is.
class CompareModel : public QAbstractTableModel
{
public:
    enum Column { State, Name, SizeBefore, SizeAfter, Columns };

    CompareModel(const FolderComparison& comparison, QObject* parent)
        : QAbstractTableModel(parent), comparison_(comparison)
    {
    }

    /// To be called when there are other rows, before anybody looks at them.
    void Refresh()
    {
        beginResetModel();
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QString TextOf(const ComparedFile& file, int column) const;

    const FolderComparison& comparison_;
};

} // namespace kestrova
