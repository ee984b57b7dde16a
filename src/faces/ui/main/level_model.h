#pragma once

#include "library/library.h"

#include <QAbstractTableModel>

namespace kestrova
{

/// The levels of the library as they are shown, a row each; what a list knows of one are columns.
class LevelModel : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    enum Role { CurrentRole = Qt::UserRole };
    enum Column {
        NameColumn,
        AuthorColumn,
        LastPlayedColumn,
        TimePlayedColumn,
        SavegamesColumn,
        SizeColumn,
        AddedColumn,
        ColumnCount,
    };
    /// What a click on that column's head sorts by.
    static LibraryOrder OrderOf(int column);

    void SetLevels(std::vector<LibraryLevel> levels);
    void SetSearch(const std::string& text);
    void SetOrder(LibraryOrder order, bool turned);
    /// The rows stay where they are until they are sorted again.
    void SetSavegames(LevelCode code, int count) { library_.SetSavegames(code, count); }
    void SortAgain();
    void SetFilter(LibraryFilter filter, const std::string& tag);
    [[nodiscard]] const Library& Shown() const { return library_; }

    /// How many savegames a level has, as words; empty while that is not known. Asked for a row
    /// that is painted.
    std::function<QString(LevelCode)> savegames = [](LevelCode) { return QString{}; };
    /// What is shown of the level has changed.
    void Renew(LevelCode code);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QString TextOf(const LibraryLevel& level, int column) const;

    Library library_;
};

} // namespace kestrova
