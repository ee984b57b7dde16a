#include "ui/dialogs/url_model.h"

#include "formats/url_text.h"
#include "ui/widgets/qt_text.h"

#include <algorithm>

namespace kestrova
{

QModelIndex UrlModel::Chosen() const
{
    const std::vector<std::size_t>& rows = editor_.Rows();
    if (!editor_.selected)
        return {};
    const auto found = std::lower_bound(rows.begin(), rows.end(), *editor_.selected);
    return found == rows.end() || *found != *editor_.selected
               ? QModelIndex{}
               : index(static_cast<int>(found - rows.begin()));
}

int UrlModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(editor_.Rows().size());
}

QVariant UrlModel::data(const QModelIndex& index, int role) const
{
    const std::vector<std::size_t>& rows = editor_.Rows();
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const UrlRecord& record = editor_.List().records[rows[static_cast<std::size_t>(index.row())]];
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(UrlRowText(record));
    case Qt::ToolTipRole:
        return PlainTip(ToQt(UrlRowText(record)));
    default:
        return {};
    }
}

} // namespace kestrova
