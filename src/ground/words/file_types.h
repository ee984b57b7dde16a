#pragma once

#include "words/message.h"

// clang-format off

/// What the desktop is told of the program's files.
namespace kestrova::Msg
{

inline constexpr Message AskFileTypes{"Archives of levels (.kva) are not known to your desktop yet. Shall a double click on one open it with Kestrova? This changes your own settings alone; the terminal does the same with kestrovactl file-types."};
inline constexpr Message FileTypesFailed{"The desktop could not be told of archives of levels (.kva)."};
inline constexpr Message FileTypesNoTools{"The desktop learns of it when its lists are made anew; the program for that is not installed (on Debian: apt-get install shared-mime-info desktop-file-utils)."};
inline constexpr Message EntryOfProgram{"Kestrova"};
inline constexpr Message CommentOfProgram{"Keep custom levels in an archive and play one at a time"};
inline constexpr Message KeywordsOfProgram{"level;archive;custom;savegame;editor;"};
inline constexpr Message EntryOfSibling{"Brivanta"};
inline constexpr Message UseFileTypes{"file-types"};
inline constexpr Message SumFileTypes{"Tells your desktop of archives of levels (.kva), so that a double click opens one with Kestrova, and of the savegame archives (.bva) when Brivanta lies in the program's folder. Prints what was written. An installed package has done it for everybody already."};

} // namespace kestrova::Msg
