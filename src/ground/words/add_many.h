#pragma once

#include "words/message.h"

// clang-format off

/// Several levels that are added one after the other.
namespace kestrova::Msg
{

inline constexpr Message ManyLooking{"Looking through the levels of the archive ..."};
inline constexpr Message ManyHasIt{"The archive has it already, as \"~1\"."};
inline constexpr Message ManyGivenTwice{"It was given twice."};
inline constexpr Message ManyIsArchive{"This is an archive, not a level: open it with File, Load Archive, or drop it alone onto the main window."};
inline constexpr Message ManyHoldsNone{"No package lies in this folder, and no folder with the files of a level (.tr4 or .tom)."};
inline constexpr Message ManyPackagesBelow{"Packages in this sub-folder: ~1. They were not taken; add this folder by itself."};
inline constexpr Message ManyProgram{"This level comes as a program that installs it. Add it alone, so that you can be asked."};
inline constexpr Message ManyNotAdded{"It was not added, and nothing of it stays in the archive."};
inline constexpr Message ManyStateWaiting{"Waits"};
inline constexpr Message ManyStateUntried{"Not tried"};
inline constexpr Message ManyStateUnderWay{"Comes in …"};
inline constexpr Message ManyStateAdded{"Added"};
inline constexpr Message ManyStateSkipped{"Skipped"};
inline constexpr Message ManyStateNeedsYou{"Needs you"};
inline constexpr Message ManyStateRefused{"Refused"};
inline constexpr Message ManyAddedAs{"Level ~1, \"~2\""};
inline constexpr Message ManyAt{"Adding ~1 of ~2"};
inline constexpr Message ManyCounts{"~1 added, ~2 skipped, ~3 needing you, ~4 refused"};
inline constexpr Message ManyCountsLeft{"~1, ~2 not tried"};
inline constexpr Message ManyEndStopped{"Stopped. What was added before stays; nothing stays of the level that was under way."};
inline constexpr Message ManyEndNoRoom{"The disk is full, so the rest was not tried. What was added before stays. Make room, and add the others again: what the archive has is skipped."};
inline constexpr Message ManyEndNoArchive{"The archive's folder is not there any more, so the rest was not tried. Bring it back, and add the others again: what the archive has is skipped."};
inline constexpr Message ManyEndNotSaved{"The archive's list of levels could not be written, so the rest was not tried. Give yourself the right to write there, or make room, and add the others again: what the archive has is skipped."};
inline constexpr Message ManyLine{"~1 of ~2: ~3: ~4"};
inline constexpr Message ManyTextLine{"~1: ~2"};
inline constexpr Message ManyAsk{"Packages and folders with levels: ~1. Is each one a level of its own, or do all of them together make one level?"};
inline constexpr Message ManyAskEach{"Each its own level"};
inline constexpr Message ManyAskOne{"All one level"};
inline constexpr Message ManyTitle{" Add many levels"};
inline constexpr Message ManyListName{"Sources of the levels"};
inline constexpr Message ManyColumnSource{"Source"};
inline constexpr Message ManyColumnState{"State"};
inline constexpr Message ManyColumnOutcome{"What became of it"};
inline constexpr Message ManyHint{"Drop packages and folders here, each of them a level, or a folder full of downloads."};
inline constexpr Message ManyBegin{"Each package, and each folder with the files of a level, becomes a level of its own. Nothing is asked meanwhile."};
inline constexpr Message ManyReady{"~1 wait"};
inline constexpr Message ManyFiles{"Add packages ..."};
inline constexpr Message ManyStart{"Start"};
inline constexpr Message ManyRetry{"Retry alone ..."};
inline constexpr Message ManyRetryTip{"Opens the window of a single level for the chosen source, where questions can be answered."};
inline constexpr Message ManyCopy{"Copy list"};
inline constexpr Message ManyClose{"Close"};
inline constexpr Message ManyNote{"Several levels: ~1"};

} // namespace kestrova::Msg
