#pragma once

#include "words/message.h"

// clang-format off

/// The page of the first start, and the practice library.
namespace kestrova::Msg
{

inline constexpr Message MakingPractice{"The practice folder is being made"};
inline constexpr Message WindowPracticeFailed{"The practice folder could not be made."};
inline constexpr Message AddingPractice{"~1 is added to the archive"};
inline constexpr Message StartTitle{"Welcome to Kestrova"};
inline constexpr Message StartWelcome{"Kestrova puts the level that you choose into your Level Editor's folder and starts the game. It needs to know three things for that."};
inline constexpr Message StartTrleFrame{" Your Level Editor "};
inline constexpr Message StartTrleName{"The Level Editor's folder"};
inline constexpr Message StartBrowseTrle{"Browse ..."};
inline constexpr Message StartTrleNone{"No Level Editor was found on this computer. Browse to its folder, which holds tomb4.exe, or set one up."};
inline constexpr Message StartTrleWhole{"This is a Level Editor's folder."};
inline constexpr Message StartTrleLevel{"This is a Level Editor's folder, and a custom level stands in it: Kestrova asks what to do about that."};
inline constexpr Message StartTrleTooLong{"This folder's name is too long for the preferences (more than 256 bytes). Choose one with a shorter path."};
inline constexpr Message StartTrleNotRead{"This folder cannot be read: ~1"};
inline constexpr Message StartOriginal{"It is original: no custom level was put in since its setup"};
inline constexpr Message StartBackupFrame{" The safety copy of its files "};
inline constexpr Message StartFull{"Full"};
inline constexpr Message StartFullSize{"Full (~1)"};
inline constexpr Message StartFullText{"Every file, so that whatever a level changes comes back."};
inline constexpr Message StartCompact{"Compact"};
inline constexpr Message StartCompactSize{"Compact (~1)"};
inline constexpr Message StartCompactText{"Without the sounds: a level's own sounds stay in the folder when it goes."};
inline constexpr Message StartRoom{"~1 are free in ~2."};
inline constexpr Message StartNoRoom{"Only ~1 are free in ~2: this copy asks for ~3."};
inline constexpr Message StartLevelsFrame{" Your levels "};
inline constexpr Message StartLevelsName{"The folder of your levels, or an archive"};
inline constexpr Message StartBrowseLevels{"Choose folder ..."};
inline constexpr Message StartLoad{"Open an archive ..."};
inline constexpr Message StartLevelsNone{"Choose a folder in which your levels shall lie."};
inline constexpr Message StartLevelsNew{"A new, empty archive keeps its levels here."};
inline constexpr Message StartLevelsFilled{"This folder is not empty: the levels get a folder of their own in it, ~1."};
inline constexpr Message StartLevelsFile{"A file stands there. Choose a folder, or an archive (.kva)."};
inline constexpr Message StartLevelsTooLong{"The name of this folder is too long for an archive: 220 letters at most."};
inline constexpr Message StartArchiveOpens{"This archive is opened."};
inline constexpr Message StartArchiveGone{"This archive is not there."};
inline constexpr Message StartArchiveThere{"An archive of this folder is there already: ~1. Kestrova asks whether to open it."};
inline constexpr Message AskOpenThere{"An archive of this folder is there already: ~1~2Do you want to open it? No makes a new, empty archive beside it."};
inline constexpr Message AskWithoutCopy{"The program stays open, and there is no safety copy of the Level Editor's files.~1Do you want to go on without one? No leads back to the page; nothing has been changed."};
inline constexpr Message StartFileTypes{"Open archives (.kva) by a double click"};
inline constexpr Message StartPracticeText{"No Level Editor at hand? A folder of its own, five levels and a stand-in for the game, all made up, ready to play."};
inline constexpr Message StartPractice{"Practice library"};
inline constexpr Message StartBegin{"Start"};
inline constexpr Message StartLater{"Not now"};

} // namespace kestrova::Msg
