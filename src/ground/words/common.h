#pragma once

#include "words/message.h"

// clang-format off

/// What is said nearly everywhere.
namespace kestrova::Msg
{

inline constexpr Message ErrorRemovingFile{"Error removing file: "};
inline constexpr Message CannotCreateFolder{"I can not create '~1' folder"};
inline constexpr Message BreakUser{"Break user"};

} // namespace kestrova::Msg
