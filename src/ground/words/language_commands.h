#pragma once

#include "words/message.h"

// clang-format off

/// The commands for the language of levels, of one, of several and of all.
namespace kestrova::Msg
{

inline constexpr Message MenuSetMyLanguage{"Set my language in current level"};
inline constexpr Message MenuRestoreLanguage{"Restore original language in current level"};
inline constexpr Message MenuSetLanguageAll{"Set my language in all levels"};
inline constexpr Message MenuRestoreLanguageAll{"Restore original language in all levels"};
inline constexpr Message UseLanguage{"language set|restore CODE|--all"};
inline constexpr Message SumLanguage{"Puts the language file of your own Level Editor into a level, or into all of them, or brings back what the level came with."};
inline constexpr Message LanguageSetOrRestore{"'~1' is neither set nor restore."};
inline constexpr Message LanguageNeedsCode{"It takes the code of a level or --all, one of them."};
inline constexpr Message AskSeveralMyLanguage{"Set your language in these ~1 levels?~2~3"};
inline constexpr Message SeveralMyLanguage{"Set my language in chosen levels"};
inline constexpr Message AskSeveralRestoreLanguage{"Restore the original language of these ~1 levels?~2~3"};
inline constexpr Message SeveralRestoreLanguage{"Restore original language in chosen levels"};
inline constexpr Message SeveralLanguage{"Language of ~1"};
inline constexpr Message SeveralLanguages{"Levels whose language was changed: ~1 of ~2."};

} // namespace kestrova::Msg
