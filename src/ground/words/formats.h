#pragma once

#include "words/message.h"

// clang-format off

/// First values of records, and why a file is none of its kind.
namespace kestrova::Msg
{

inline constexpr Message NotReadableTitle{"<NOT READABLE>"};

inline constexpr Message SourceIsUtf16{"it is written with two bytes for each letter (UTF-16), which the Level Editor's compiler cannot read. Save it once more as plain text (ANSI) in your text editor"};
inline constexpr Message SourceIsNoText{"it holds zero bytes, so it is no text"};
inline constexpr Message ScriptLevelWithoutName{"one of its levels has no line Name=, so nothing of the file is used"};
inline constexpr Message ScriptLevelWithoutFile{"one of its levels has no line Level= that names a file behind a backslash, so nothing of the file is used"};
inline constexpr Message ErrorScanningMonth{"Error scanning date month"};
inline constexpr Message NoDisc{"This is no disc, and no image of one: its first sectors do not say what it holds."};
inline constexpr Message DiscListDamaged{"The disc's own list of its files is damaged, so nobody can say where they lie."};

} // namespace kestrova::Msg
