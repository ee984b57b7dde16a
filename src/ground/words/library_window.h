#pragma once

#include "words/message.h"

// clang-format off

/// The list of levels in the main window: search, order, filter, rows and covers.
namespace kestrova::Msg
{

inline constexpr Message SearchHint{"Search a level (Ctrl+F)"};
inline constexpr Message SearchName{"Search text"};
inline constexpr Message PreviousLevelTip{"Previous level; with a search text the match before (Shift+F3)"};
inline constexpr Message NextLevelTip{"Next level; with a search text the next match (F3)"};
inline constexpr Message LevelsListName{"Levels of the archive"};
inline constexpr Message NotFound{"Not found"};
inline constexpr Message DropArchiveHere{"Drop it here to open this archive"};
inline constexpr Message DroppedArchives{"An archive is opened alone, so nothing was done with ~1. Drop it by itself."};
inline constexpr Message DropLevelHere{"Drop it here to add it to the archive"};
inline constexpr Message CountLevels{"~1 levels"};
inline constexpr Message CountOneLevel{"1 level"};
inline constexpr Message CountMatches{"~1 of ~2"};
inline constexpr Message EmptyNoArchive{"No archive is loaded.~1Make one with File, New Archive, or open yours with File, Load Archive."};
inline constexpr Message EmptyNoLevels{"This archive has no custom levels yet.~1Drop a level's zip or folder onto this window, or choose Levels, Add new level."};
inline constexpr Message EmptyNoHit{"No level holds “~1” in its name, author or notes.~2Press Esc to see all levels again."};
inline constexpr Message EmptyFilteredHit{"No level under “~1” holds “~2” in its name, author or notes.~3Press Esc to clear the search, or choose All levels above."};
inline constexpr Message EmptyFavourites{"No level has four or five stars yet.~1Give stars beside the list, or by the right mouse button on a level; choose All levels above to see the others."};
inline constexpr Message EmptyFiltered{"There is no level under “~1”.~2Choose All levels above to see the others."};
inline constexpr Message CountChosen{"~1 of ~2 chosen"};
inline constexpr Message SortBoxName{"What the levels are sorted by"};
inline constexpr Message SortName{"Name"};
inline constexpr Message SortAuthor{"Author"};
inline constexpr Message SortLastPlayed{"Last played"};
inline constexpr Message SortTimePlayed{"Time played"};
inline constexpr Message SortSize{"Size"};
inline constexpr Message SortAdded{"Added"};
inline constexpr Message SortStars{"Stars"};
inline constexpr Message SortStatus{"Status"};
inline constexpr Message SortTurnTip{"Turns the order round"};
inline constexpr Message ColumnsUsual{"Usual columns"};
inline constexpr Message ColumnSavegames{"Savegames"};
inline constexpr Message FilterBoxName{"Which levels are shown"};
inline constexpr Message FilterAll{"All levels"};
inline constexpr Message FilterFavourites{"Favourites"};
inline constexpr Message FilterOnDisc{"On disc"};
inline constexpr Message FilterTag{"Tag: ~1"};
inline constexpr Message StatusNew{"New"};
inline constexpr Message StatusPlaying{"Playing"};
inline constexpr Message StatusFinished{"Finished"};
inline constexpr Message StatusGivenUp{"Given up"};
inline constexpr Message NoStars{"None"};
inline constexpr Message StarsNumber{"~1"};
inline constexpr Message TagsMenu{"Tags"};
inline constexpr Message NewTag{"New tag …"};
inline constexpr Message AskNewTag{"A tag for the chosen levels:"};
inline constexpr Message LookRows{"Levels as rows (Ctrl+1)"};
inline constexpr Message LookCovers{"Levels as covers (Ctrl+2)"};
inline constexpr Message CoverSizeName{"Size of the covers"};
inline constexpr Message DiscBadge{"CD ~1"};

} // namespace kestrova::Msg
