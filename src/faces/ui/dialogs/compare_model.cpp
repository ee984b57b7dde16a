#include "ui/dialogs/compare_model.h"

#include "core/size_words.h"
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
    return file.empty() ? QString() : ToQt(SizeInWords(static_cast<double>(size)));
}

} // namespace

CompareModel::CompareModel(const FolderComparison& comparison, QObject* parent)
    : RowsModel({Msg::CompareColumnState, Msg::CompareColumnFile, Msg::CompareColumnBefore,
                 Msg::CompareColumnAfter},
                parent),
      comparison_(comparison)
{
}

std::size_t CompareModel::Count() const
{
    return comparison_.Rows().size();
}

QString CompareModel::TextOf(std::size_t row, int column) const
{
    const ComparedFile& file = comparison_.At(row);
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

QString CompareModel::TipOf(std::size_t row, int column) const
{
    const ComparedFile& file = comparison_.At(row);
    return column == State && !file.reason.empty() ? ToQt(file.reason)
                                                   : ToQt(OnOneLine(file.name.native()));
}

} // namespace kestrova
