#pragma once

#include "upkeep/level_checks.h"

#include <QAbstractTableModel>

namespace kestrova
{

/// The rows of a check, levels that could not be checked behind them. A row's texts are made when
/// it is painted.
class CheckModel : public QAbstractTableModel
{
public:
    enum Column { Level, File, Fault, Source, Columns };

    CheckModel(const LevelChecks& checks, QObject* parent)
        : QAbstractTableModel(parent), checks_(checks)
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
    [[nodiscard]] QString TextOf(std::size_t row, int column) const;

    const LevelChecks& checks_;
};

} // namespace kestrova
