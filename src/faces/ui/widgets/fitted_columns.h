#pragma once

#include <QObject>
#include <vector>

class QTreeView;

namespace kestrova
{

/// Keeps the columns of a list as wide as their words. Where there is no room for all of them,
/// those that say least are not shown. Belongs to the list.
class FittedColumns : public QObject
{
public:
    /// `order`: first what is never hidden, last what goes first. `stretched` is one of them, and
    /// has what the others leave.
    FittedColumns(QTreeView& list, std::vector<int> order, int stretched);

    /// To be called when the rows are other ones.
    void Fit();

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    [[nodiscard]] int WidthOf(int column) const;

    QTreeView& list_;
    std::vector<int> order_;
    int stretched_;
};

} // namespace kestrova
