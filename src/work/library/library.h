#pragma once

#include "library/library_levels.h"

namespace kestrova
{

/// What the shown levels are sorted by; equal ones follow their names.
enum class LibraryOrder {
    Name,
    Author,     ///< those without one last
    LastPlayed, ///< from here on the latest, longest, largest or best first
    TimePlayed,
    Size,
    Added,
    Stars,
    Status,    ///< being played, new, finished, given up
    Savegames, ///< the most first; those that are not counted yet last
};

enum class LibraryFilter { All, Playing, New, Finished, GivenUp, Favourites, OnDisc, Tag };
/// From this many stars on a level is a favourite.
inline constexpr int favouriteStars = 4;

/// The levels of an archive as a person wants to see them: sorted, filtered, searched. The levels
/// that are left have rows, counted from 0. The original configuration is no level that a filter
/// could mean: only an unfiltered list has it.
class Library
{
public:
    void SetLevels(std::vector<LibraryLevel> levels);
    /// `turned`: the other way round. Levels of which the thing is not known stay last.
    void SetOrder(LibraryOrder order, bool turned = false);
    /// How many savegames the level has. The rows stay as they are until they are sorted again.
    void SetSavegames(LevelCode code, int count);
    void SortAgain() { Sort(); }
    /// `tag`: which one, in any case of its letters.
    void SetFilter(LibraryFilter filter, std::string_view tag = {});
    /// Shows the levels whose name, author, note or own note holds the text without regard to case;
    /// blanks around it do not count. False when that is what is shown already.
    bool SetSearch(std::string_view text);

    /// How many rows there are.
    [[nodiscard]] int Count() const { return static_cast<int>(shown_.size()); }
    [[nodiscard]] const LibraryLevel& At(int row) const
    {
        return levels_[shown_[static_cast<std::size_t>(row)]];
    }
    /// -1 when the level is hidden, or there is none of that code.
    [[nodiscard]] int RowOf(LevelCode code) const;

    /// Of all levels, shown or not, in the order of their names.
    [[nodiscard]] const std::vector<LibraryLevel>& Levels() const { return levels_; }
    [[nodiscard]] bool Has(LevelCode code) const { return PlaceOf(code) < levels_.size(); }
    /// Every tag once, in the order of their names.
    [[nodiscard]] std::vector<std::string> Tags() const;
    [[nodiscard]] LibraryOrder Order() const { return order_; }
    [[nodiscard]] bool IsTurned() const { return turned_; }
    [[nodiscard]] LibraryFilter Filter() const { return filter_; }
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    [[nodiscard]] bool IsSearched() const { return !search_.empty(); }

private:
    [[nodiscard]] std::size_t PlaceOf(LevelCode code) const;
    void Sort();
    void Show();
    [[nodiscard]] bool Passes(const LibraryLevel& level) const;
    void FoldAll();

    std::vector<LibraryLevel> levels_;
    std::vector<std::pair<LevelCode, std::uint32_t>> places_; ///< by code; where it is in levels_
    std::vector<std::string> folded_; ///< what a search looks through; filled by the first one
    std::vector<std::uint32_t> sorted_;
    std::vector<std::uint32_t> shown_;
    std::vector<int> rows_; ///< of levels_; -1: hidden
    LibraryOrder order_ = LibraryOrder::Name;
    bool turned_ = false;
    LibraryFilter filter_ = LibraryFilter::All;
    std::string tag_;
    std::string search_; ///< folded
};

} // namespace kestrova
