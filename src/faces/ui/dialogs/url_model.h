#pragma once

#include "online/url_editor.h"

#include <QAbstractListModel>

namespace kestrova
{

/// The shown rows of the list of addresses. A row's text is made when it is painted, however long
/// the list is.
class UrlModel : public QAbstractListModel
{
public:
    UrlModel(const UrlEditor& editor, QObject* parent) : QAbstractListModel(parent), editor_(editor)
    {
    }

    /// To be called when there are other rows, before anybody looks at them.
    void Refresh()
    {
        beginResetModel();
        endResetModel();
    }
    /// The row of the chosen record; not valid when none is.
    [[nodiscard]] QModelIndex Chosen() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    const UrlEditor& editor_;
};

} // namespace kestrova
