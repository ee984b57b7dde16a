#pragma once

#include "words/message.h"

// clang-format off

/// Failures that every operation may tell.
namespace kestrova::Msg
{

inline constexpr Message AskReplaceZip{"There is a file ~1 already. Do you want to replace it?"};
inline constexpr Message AskOpenNoDocument{"~1 is no text, page or picture. Whoever made the level made it too, and the desktop may start it as a program. Open it only when you know what it is.~2Do you want to open it?"};
inline constexpr Message HeldByAnother{"Another Kestrova already works on the folder ~1 (~2). Nothing has been changed. Close the other one, then try again."};
inline constexpr Message FolderNotLocked{"The folder ~1 could not be locked, and without that two programs could change it at once. Nothing has been changed."};
inline constexpr Message PreferencesNotSaved{"The preferences could not be saved; the old ones still stand in their file."};
inline constexpr Message ReplaceFile{"Replace file: "};
inline constexpr Message ReplaceSize{"Size: "};
inline constexpr Message ReplaceDate{"Date: "};
inline constexpr Message ReplaceWithFile{"with file:"};
inline constexpr Message ReplaceIt{"Replace it?"};
inline constexpr Message ScanningFiles{"Scanning files in progress"};
inline constexpr Message RemovingFiles{"Removing files in progress"};
inline constexpr Message ErrorRemovingFiles{"Error removing files"};
inline constexpr Message RemovingFolders{"Removing folders in progress"};
inline constexpr Message ErrorDeletingFolder{"Error deleting folder: "};
inline constexpr Message ErrorCopyingFileTo{"Error copying file '~1' to '"};
inline constexpr Message FolderNotRead{"A file or folder could not be read: ~1. Nothing was done on that account, and it is as it was. See that its drive is there and that you may read it, then try again."};
inline constexpr Message LockWordsNone{"it has not written yet which it is"};
inline constexpr Message WriteNoFile{"~1 is a folder, a device or a pipe, and no file. Nothing was written there. Choose another name."};
inline constexpr Message LockWords{"process ~1, since ~2"};
inline constexpr Message CannotWriteLog{"The log file of this swap could not be written. The swap itself is not touched by that."};
inline constexpr Message FileCopyInProgress{"File copy in progress ..."};

} // namespace kestrova::Msg
