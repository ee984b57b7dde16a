#pragma once

#include "words/message.h"

// clang-format off

/// The main window.
namespace kestrova::Msg
{

inline constexpr Message ChooseImportFolder{"Select source folder with savegames to import"};
inline constexpr Message PlayTip{"Puts the level into the Level Editor's folder and starts the game (F5)"};
inline constexpr Message FactSizes{"~1 of level files, ~2 of savegames and screen-shots"};
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
inline constexpr Message GameRunsKeysTip{"F9 frees the game's slots into the archive, F11 brings savegames back, Print Screen keeps a picture."};

} // namespace kestrova::Msg
