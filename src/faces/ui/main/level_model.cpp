#include "ui/main/level_model.h"

#include "core/size_words.h"
#include "ui/main/play_head.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

namespace kestrova
{

namespace
{

struct ColumnWords {
    Message head;
    LibraryOrder order;
};

const ColumnWords& WordsOf(int column)
{
    static constexpr ColumnWords columns[] = {
        {Msg::SortName, LibraryOrder::Name},
        {Msg::SortAuthor, LibraryOrder::Author},
        {Msg::SortLastPlayed, LibraryOrder::LastPlayed},
        {Msg::SortTimePlayed, LibraryOrder::TimePlayed},
        {Msg::ColumnSavegames, LibraryOrder::Savegames},
        {Msg::SortSize, LibraryOrder::Size},
        {Msg::SortAdded, LibraryOrder::Added},
    };
    static_assert(std::size(columns) == LevelModel::ColumnCount);
    return columns[column];
}

QString DayIfAny(const std::optional<std::int64_t>& seconds)
{
    return seconds ? DayText(*seconds) : QString{};
}

QString DurationText(std::int64_t seconds)
{
    return seconds > 0 ? ToQt(PlayedInWords(seconds)) : QString{};
}

} // namespace

LibraryOrder LevelModel::OrderOf(int column)
{
    return WordsOf(column).order;
}

void LevelModel::SetLevels(std::vector<LibraryLevel> levels)
{
    beginResetModel();
    library_.SetLevels(std::move(levels));
    endResetModel();
}

void LevelModel::SetSearch(const std::string& text)
{
    beginResetModel();
    library_.SetSearch(text);
    endResetModel();
}

void LevelModel::SetOrder(LibraryOrder order, bool turned)
{
    beginResetModel();
    library_.SetOrder(order, turned);
    endResetModel();
}

void LevelModel::SortAgain()
{
    beginResetModel();
    library_.SortAgain();
    endResetModel();
}

void LevelModel::SetFilter(LibraryFilter filter, const std::string& tag)
{
    beginResetModel();
    library_.SetFilter(filter, tag);
    endResetModel();
}

void LevelModel::Renew(LevelCode code)
{
    if (const int row = library_.RowOf(code); row >= 0)
        dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int LevelModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : library_.Count();
}

int LevelModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString LevelModel::TextOf(const LibraryLevel& level, int column) const
{
    switch (column) {
    case NameColumn:
        return ToQt(level.text);
    case AuthorColumn:
        return ToQt(level.author);
    case LastPlayedColumn:
        return DayIfAny(level.own.lastPlayed);
    case TimePlayedColumn:
        return DurationText(level.own.secondsPlayed);
    case SavegamesColumn:
        return savegames(level.code);
    case SizeColumn:
        return ToQt(SizeInWords(static_cast<double>(level.size)));
    case AddedColumn:
        return DayIfAny(level.own.added);
    default:
        return {};
    }
}

QVariant LevelModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const LibraryLevel& level = library_.At(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return TextOf(level, index.column());
    case CurrentRole:
        return level.current;
    default:
        return {};
    }
}

QVariant LevelModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return Words(WordsOf(section).head);
}

} // namespace kestrova
