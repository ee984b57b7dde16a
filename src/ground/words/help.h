#pragma once

#include "words/message.h"

// clang-format off

/// The help's two windows.
namespace kestrova::Msg
{

inline constexpr Message HelpNotFound{"Warning: I can not find file: "};
inline constexpr Message HelpQuoted{"\"~1\""};
inline constexpr Message HelpItems{" items"};
inline constexpr Message HelpNoItem{"No selected item"};

} // namespace kestrova::Msg
