#include "ui/dialogs/check_model.h"

#include "core/text.h"
#include "ui/widgets/qt_text.h"
#include "words/check.h"

namespace kestrova
{

namespace
{

QString OneLineText(const std::string& text)
{
    return ToQt(OnOneLine(text));
}

/// Where a file comes from, or what keeps it from coming.
QString SourceText(const CheckedRow& row)
{
    if (!row.remedy.empty())
        return OneLineText(row.remedy);
    if (!row.source.empty())
        return OneLineText(row.source);
    return row.fault.kind == FileFault::Unexpected ? QString() : Words(Msg::CheckNoSource);
}

QString UncheckedText(const UncheckedLevel& level, int column)
{
    switch (column) {
    case CheckModel::Level:
        return OneLineText(level.level);
    case CheckModel::Fault:
        return Words(Msg::FaultUnchecked);
    case CheckModel::Source:
        return OneLineText(level.reason);
    default:
        return {};
    }
}

} // namespace

CheckModel::CheckModel(const LevelChecks& checks, QObject* parent)
    : RowsModel({Msg::CheckColumnLevel, Msg::CheckColumnFile, Msg::CheckColumnFault,
                 Msg::CheckColumnSource},
                parent),
      checks_(checks)
{
}

std::size_t CheckModel::Count() const
{
    return checks_.Rows().size() + checks_.Unchecked().size();
}

QString CheckModel::TextOf(std::size_t row, int column) const
{
    const std::size_t faults = checks_.Rows().size();
    if (row >= faults)
        return UncheckedText(checks_.Unchecked()[row - faults], column);
    const CheckedRow& checked = checks_.Rows()[row];
    switch (column) {
    case Level:
        return OneLineText(checked.level);
    case File:
        return OneLineText(checked.fault.file);
    case Fault:
        return ToQt(LevelChecks::NameOf(checked.fault.kind));
    default:
        return SourceText(checked);
    }
}

} // namespace kestrova
