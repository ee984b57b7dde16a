#include "ui/dialogs/compare_model.h"

#include "core/text.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_dialogs.h"

namespace kestrova
{

namespace
{

/// Nothing for a file that is not there.
QString SizeText(const Path& file, std::uint64_t size)
{
    return file.empty() ? QString() : ToQt(FormatSize(static_cast<double>(size)));
}

} // namespace

int CompareModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(comparison_.Rows().size());
}

int CompareModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QString CompareModel::TextOf(const ComparedFile& file, int column) const
{
    switch (column) {
    case State:
        return ToQt(FolderComparison::NameOf(file.state));
    case Name:
        return ToQt(OnOneLine(file.name.native()));
    case SizeBefore:
        return SizeText(file.before, file.sizeBefore);
    default:
        return SizeText(file.after, file.sizeAfter);
    }
}

QVariant CompareModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ComparedFile& file = comparison_.At(static_cast<std::size_t>(index.row()));
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(file, column);
    case Qt::ToolTipRole:
        return PlainTip(column == State && !file.reason.empty()
                            ? ToQt(file.reason)
                            : ToQt(OnOneLine(file.name.native())));
    case Qt::TextAlignmentRole:
        return column >= SizeBefore ? QVariant{Qt::AlignRight | Qt::AlignVCenter} : QVariant{};
    default:
        return {};
    }
}

QVariant CompareModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    constexpr Message heads[Columns] = {Msg::CompareColumnState, Msg::CompareColumnFile,
                                        Msg::CompareColumnBefore, Msg::CompareColumnAfter};
    return Words(heads[section]);
}

} // namespace kestrova
