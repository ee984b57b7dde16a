#pragma once

#include "words/message.h"

// clang-format off

/// An archive on discs that comes to the hard disk, and files that leave it.
namespace kestrova::Msg
{

inline constexpr Message SetupTitle{"Archive \"~1\" (levels: ~2, discs: ~3)"};
inline constexpr Message InstallChooseFolder{"Select an hard disk folder to install current archive"};
inline constexpr Message SetupNoRoomEnd{")"};
inline constexpr Message InstallUnderWay{"Install cd archive in progress"};
inline constexpr Message CdMissing{"Error: cd missing"};
inline constexpr Message AskGoOnInstalling{"Error copying file in subfolder '~1 Continue setup?"};
inline constexpr Message RemovingReadOnly{"Removing Only-Read flags in progress..."};
inline constexpr Message ArchiveInstalled{"TR Level archive has been saved in ~1In future you should load this new .kva archive and not that on cd"};
inline constexpr Message InstallFolderTaken{"The folder ~1 holds something already. Nothing has been changed. Choose another folder, or remove what lies there."};
inline constexpr Message InstallNameBad{"The archive names no folder that could be made here (~1). Nothing has been changed."};
inline constexpr Message InstallNoteDamaged{"What the first disc tells of the files of its set is damaged (~1), so nothing can be compared with it."};
inline constexpr Message InstallNotCompared{"Levels that were copied, and not compared with what their discs were made of: ~1. The first disc does not tell that of them; discs of another program, or of an early version of this one, do not. Play them to see whether they are whole."};
inline constexpr Message InstallNotDone{"The archive was not installed in ~1. Nothing that was there before has been changed."};
inline constexpr Message RemovingFilesFromHd{"Removing FILES folder from HD"};
inline constexpr Message FilesStay{"The files of these levels stay on the hard disk, and the levels are played from there:"};
inline constexpr Message FilesStayUnverified{"~1: its copy on disc # ~2 could not be compared with it"};
inline constexpr Message FilesStayChanged{"~1: ~2 is not as it is on disc # ~3"};
inline constexpr Message FilesStayNotRemoved{"~1: its folder could not be removed"};
inline constexpr Message AskKeepOnHd{"As long as this disc is not there, the archive cannot be loaded as one that lies on discs. Do you want the levels whose files are on the hard disk still to stay there? They are played from there then, and the discs are not asked for. With No nothing is changed, and the archive is not loaded."};
inline constexpr Message CdMissingStep2{"Cd missing: cd install step 2, aborted!~1Please, repeat cd burning or restore OLD kva archive"};
inline constexpr Message CannotReadDiscFolder{"I cann't read folder ~1Please, repeat cd burning or restore OLD kva archive"};

} // namespace kestrova::Msg
