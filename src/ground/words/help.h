#pragma once

#include "words/message.h"

// clang-format off

/// The help's two windows.
namespace kestrova::Msg
{

inline constexpr Message HelpNotFound{"Warning: I can not find file: "};
inline constexpr Message HelpQuoted{"\"~1\""};
inline constexpr Message HelpNorInstalled{"Nor does the help lie where the program was installed: ~1. Install the program again."};
inline constexpr Message HelpItems{" items"};
inline constexpr Message HelpTitle{" Help"};
inline constexpr Message HelpFind{"Find ->"};
inline constexpr Message HelpFirst{"Find"};
inline constexpr Message HelpNext{"Next"};
inline constexpr Message HelpPrevious{"Previous"};
inline constexpr Message HelpIndexButton{"Index"};
inline constexpr Message HelpClose{"Close"};
inline constexpr Message HelpIndexTitle{" Help Index"};
inline constexpr Message HelpIndexMain{"Show main topics"};
inline constexpr Message HelpIndexSub{"Show sub-topics"};
inline constexpr Message HelpIndexHint{"Type a part of a topic"};
inline constexpr Message HelpHint{"A double click on a word, or Enter, takes it into the search. Ctrl and the wheel change the size of the letters."};
inline constexpr Message HelpFindTip{"What is looked for (Ctrl+F)"};
inline constexpr Message HelpFirstTip{"The first place in the text (Enter)"};
inline constexpr Message HelpNextTip{"The next place (F3)"};
inline constexpr Message HelpPreviousTip{"The place before (Shift+F3)"};

} // namespace kestrova::Msg
