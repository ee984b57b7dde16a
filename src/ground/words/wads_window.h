#pragma once

#include "words/message.h"

// clang-format off

/// The windows of an import of wads.
namespace kestrova::Msg
{

inline constexpr Message AddWadsTitle{" Import new/updated wads"};
inline constexpr Message AddWadsFile{"Add file"};
inline constexpr Message AddWadsFolder{"Add folder"};
inline constexpr Message AddWadsImport{"Import"};
inline constexpr Message AddWadsPrint{"Print"};
inline constexpr Message AddWadsCancel{"Cancel"};
inline constexpr Message AddWadsClose{"Close"};
inline constexpr Message AddWadsStop{"Stop"};
inline constexpr Message AddWadsFilesOf{"Files of the package"};
inline constexpr Message AddWadsReportOf{"What became of them"};
inline constexpr Message AddWadsListName{"Files of the wad package"};
inline constexpr Message AddWadsColumnFile{"File"};
inline constexpr Message AddWadsColumnSize{"Size"};
inline constexpr Message AddWadsHint{"Drop a wad package here, or files and folders."};
inline constexpr Message AskDropPackage{"The files of this window are not imported yet. Do you want to give them up?"};
inline constexpr Message NoTextToPrint{"No text to print"};
inline constexpr Message PrintTitle{"Report of an import of wads"};
inline constexpr Message PrintPage{"Page ~1 of ~2"};
inline constexpr Message ScambiaNomiTitle{" Import new wads: Set name for new level"};
inline constexpr Message ScambiaOldName{"Original name :"};
inline constexpr Message ScambiaNewName{"New name    :"};
inline constexpr Message ScambiaUseOld{"Use Original Name"};
inline constexpr Message ScambiaOk{"Ok"};
inline constexpr Message ScambiaEmpty{"New name is empty"};
inline constexpr Message ScambiaNoName{"This would not be read as a name, since in a language file [Strings] and [PSXStrings] are headings, and a line that begins with a semicolon is a comment. Choose another name."};

} // namespace kestrova::Msg
