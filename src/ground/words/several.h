#pragma once

#include "words/message.h"

// clang-format off

/// What is done with several chosen levels at once.
namespace kestrova::Msg
{

inline constexpr Message SeveralMore{"and ~1 more"};
inline constexpr Message SeveralStopped{"It was stopped; the levels behind that are as they were."};
inline constexpr Message SeveralRemove{"Delete chosen levels"};
inline constexpr Message AskSeveralRemove{"Delete these ~1 levels, with their files?~2~3"};
inline constexpr Message SeveralRemoving{"Deleting ~1"};
inline constexpr Message SeveralRemoved{"Levels that were deleted: ~1 of ~2."};
inline constexpr Message SeveralExport{"Export chosen levels as zip files"};
inline constexpr Message AskSeveralExport{"Export these ~1 levels, a zip file for each, with their screenshots?~2~3"};
inline constexpr Message ChooseSeveralExport{"Select a folder for the zip files"};
inline constexpr Message SeveralExporting{"Exporting ~1"};
inline constexpr Message SeveralExported{"Levels that were exported: ~1 of ~2."};
inline constexpr Message SeveralRecompress{"Compress as the archive's settings say"};
inline constexpr Message AskSeveralRecompress{"Bring the files of these ~1 levels into the form that the archive's settings say?~2~3"};
inline constexpr Message SeveralRecompressing{"Compressing ~1"};
inline constexpr Message SeveralRecompressed{"Levels that have the form that the archive's settings say: ~1 of ~2."};

} // namespace kestrova::Msg
