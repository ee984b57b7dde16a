#pragma once

#include "words/message.h"

// clang-format off

/// Tom files, the wads that they are linked with, and the assistant that links them.
namespace kestrova::Msg
{

inline constexpr Message TomHasNoWad{"Source file '~1' has not .wad file to be converted~2Please, select wads to convert '~3'"};

} // namespace kestrova::Msg
