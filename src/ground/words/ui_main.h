#pragma once

#include "words/message.h"

// clang-format off

/// The main window.
namespace kestrova::Msg
{

inline constexpr Message ChooseImportFolder{"Select source folder with savegames to import"};
inline constexpr Message SearchHint{"Search a level (Ctrl+F)"};
inline constexpr Message SearchName{"Search text"};
inline constexpr Message PreviousLevelTip{"Previous level; with a search text the match before (Shift+F3)"};
inline constexpr Message NextLevelTip{"Next level; with a search text the next match (F3)"};
inline constexpr Message PlayTip{"Puts the level into the Level Editor's folder and starts the game (F5)"};
inline constexpr Message LevelsListName{"Levels of the archive"};
inline constexpr Message NotFound{"Not found"};
inline constexpr Message FactSizes{"~1 of level files, ~2 of savegames and screen-shots"};
inline constexpr Message CountLevels{"~1 levels"};
inline constexpr Message CountOneLevel{"1 level"};
inline constexpr Message CountMatches{"~1 of ~2"};
inline constexpr Message EmptyNoArchive{"No archive is loaded.~1Make one with File, New Archive, or open yours with File, Load Archive."};
inline constexpr Message EmptyNoLevels{"This archive has no custom levels yet.~1Drop a level's zip or folder onto this window, or choose Levels, Add new level."};
inline constexpr Message EmptyNoHit{"No level holds “~1” in its name, author or notes.~2Press Esc to see all levels again."};
inline constexpr Message EmptyFiltered{"No level is left of “~1”.~2Choose All levels above to see the others."};
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
inline constexpr Message PlayedMinutes{"~1 min"};
inline constexpr Message PlayedHours{"~1 h ~2 min"};
inline constexpr Message DropLevelHere{"Drop it here to add it to the archive"};
inline constexpr Message NothingChosen{"No level is chosen"};
inline constexpr Message PleaseWaitToClose{"Something is still being done; the window closes when you ask again after that."};
inline constexpr Message NotSavedAtEnd{"kestrova: the list of levels could not be written before the end: ~1"};
inline constexpr Message ChoosePracticePlace{"Select a folder for the practice Level Editor"};
inline constexpr Message LevelAdded{"The level ~1 is in the archive."};
inline constexpr Message WindowVersionLine{"Kestrova ~1"};
inline constexpr Message WindowUsageLine{"Usage: kestrova [--home DIR] [ARCHIVE.kva] [LEVEL...]  (--version, --help)"};
inline constexpr Message AddLevelShort{"Add level"};
inline constexpr Message ToolBarName{"Tools at hand"};
inline constexpr Message OpensWhenDone{"What you want to open is opened as soon as this is done."};
inline constexpr Message MeetingSilent{"Kestrova is open already, and does not answer. Nothing was opened, and nothing was changed. It may be waiting for a disk; try again after a while, or end it first."};
inline constexpr Message MeetingTooMuch{"Kestrova is open already, and these are too many files to hand them over at once. Nothing was opened. Drop them onto its window."};
inline constexpr Message WindowNoProgramFolder{"The program's folder cannot be made, so Kestrova cannot start: ~1"};
inline constexpr Message GameRuns{"Game running"};
inline constexpr Message GameRunsKeys{"Game running (F9, F11, Print Screen)"};
inline constexpr Message GameRunsTip{"A program runs in the Level Editor's folder."};
inline constexpr Message GameRunsKeysTip{"F9 frees the game's slots into the archive, F11 brings savegames back, Print Screen keeps a picture."};

} // namespace kestrova::Msg
