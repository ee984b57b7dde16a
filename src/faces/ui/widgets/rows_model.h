#pragma once

#include "words/message.h"

#include <QAbstractTableModel>

#include <vector>

namespace kestrova
{

/// Rows that are only looked at. A row's texts are made when it is painted, however many there are.
class RowsModel : public QAbstractTableModel
{
public:
    RowsModel(std::vector<Message> heads, QObject* parent);

    /// To be called when there are other rows, before anybody looks at them.
    void Refresh();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

protected:
    [[nodiscard]] virtual std::size_t Count() const = 0;
    [[nodiscard]] virtual QString TextOf(std::size_t row, int column) const = 0;
    [[nodiscard]] virtual QString TipOf(std::size_t row, int column) const
    {
        return TextOf(row, column);
    }
    [[nodiscard]] virtual bool HoldsNumbers(int column) const
    {
        (void)column;
        return false;
    }

private:
    std::vector<Message> heads_;
};

} // namespace kestrova
