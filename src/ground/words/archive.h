#pragma once

#include "words/message.h"

// clang-format off

/// The archive and its folders.
namespace kestrova::Msg
{

inline constexpr Message CdNotAvailable{"Cd not available"};
inline constexpr Message LevelOnCd{"Current level is also on cd. ~1You can not modify its level files"};
inline constexpr Message ErrorSavingArchive{"Error while saving archive: "};
inline constexpr Message ArchiveFolderUnplugged{"The archive's folder ~1 is not there, or stands empty, so this cannot be done now. Nothing has been changed. Connect its drive, or load the archive again and say where its folder is now."};
inline constexpr Message ArchiveFolderOwned{"Levels are not safe in ~1: it lies inside ~2, which belongs to Kestrova's own work or to the Level Editor, and is exchanged or copied as a whole. Nothing has been changed. Choose a folder elsewhere."};
inline constexpr Message AskSaveArchive{"Current archive '~1' has been changed.~2Do you want save it?"};
inline constexpr Message ComputingSizes{"Computing sizes; levels: ~1"};
inline constexpr Message ListWithoutOriginal{"the list of levels in memory is no whole archive"};
inline constexpr Message AskDropChanges{"The archive's changes could not be saved. Do you want to give them up and go on? They are lost then. With No everything stays as it is, so that you can make room on the disk and save again."};
inline constexpr Message MissingArchive{"Missing archive! Before adding levels you must create new (empty) archive"};

} // namespace kestrova::Msg
