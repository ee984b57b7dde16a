#pragma once

#include "words/message.h"

// clang-format off

/// The Level Editor's own work, as the terminal says it.
namespace kestrova::Msg
{

inline constexpr Message UseScript{"script show FILE"};
inline constexpr Message SumScript{"Shows what a source of the Level Editor's script compiler says: the levels of a script.txt, each with its file and its name, or the strings of a language file by their position, their heading first."};
inline constexpr Message KeysScript{"of a script, an object with `levels`, an array of objects with `tr4`, `name`; of a language file, an object with `strings`, an array."};
inline constexpr Message WrongScriptWord{"'~1' is not show."};

} // namespace kestrova::Msg
