#pragma once

#include "words/message.h"

// clang-format off

/// A list of levels that is made anew from their folders.
namespace kestrova::Msg
{

inline constexpr Message AskRecover{"If you have lost or damaged archive.kva but You have all files folder you could recover archive but then you'll have insert manually infos about: Level name and [more info] file, using command [Menu->Level->Properties of current level]"};
inline constexpr Message ChooseRecoverFolder{"Choose HD main folder of archive to recover"};
inline constexpr Message AskRecoverDiscs{"Is archive to restore also on CD?"};
inline constexpr Message ChooseFirstDisc{"Choose main folder on FIRST CD (folder 1)"};
inline constexpr Message NotFirstDisc{"Folder [~1] is NOT first folder archive"};
inline constexpr Message NoLevelFolders{"I've not found any 'LEVEL_###' subfolder in folder: "};
inline constexpr Message RecoveredName{"Level Name "};
inline constexpr Message RecoverInsertDisc{"Please insert CD #"};
inline constexpr Message DiscFolderNotFound{"Folder [~1] not found"};
inline constexpr Message AskNextDisc{"Exits (next) CD #"};
inline constexpr Message RecoverScanning{"Looking through the folders of levels: ~1"};
inline constexpr Message RecoverNoDisc{"On ~1 lies no disc of an archive. No list was made, and nothing has been changed. Name a disc's folder, the folder in which it is mounted, or its image."};
inline constexpr Message RecoverWithoutTr4{"These levels have no .tr4 file. They are on the list all the same; look what they lack: ~1"};
inline constexpr Message RecoverPassedOver{"These are named like folders of levels and are none that the list can have, so they were left alone: ~1. A folder's number has four digits, as in LEVEL_0012, and each number stands once."};
inline constexpr Message AskTakeAside{"Levels lie here that were set aside: ~1. Do you want them on the list too, each with a number of its own? Their folders are renamed for that."};
inline constexpr Message RecoverAsideFailed{"A folder that was set aside could not be taken onto the list, and stays as it is: ~1"};
inline constexpr Message Recovered{"The archive is recovered. Levels: ~1; with a number in place of a name: ~2. Its list is ~3."};
inline constexpr Message RecoverFailed{"No list could be made. Nothing has been changed."};
inline constexpr Message UseRecover{"recover DIR [--discs DIR]… [--set-aside]"};
inline constexpr Message SumRecover{"Makes the list of an archive anew from the folders of its levels in DIR, when its file was lost or damaged; names come from old lists, from what the levels brought, or are numbers. --discs, which may stand several times, names a disc of the archive or its image. --set-aside takes levels that were set aside onto the list too."};
inline constexpr Message KeysRecover{"an object with `archive` (its new file), `folder` (where its levels lie), `levels` (their number)."};

} // namespace kestrova::Msg
