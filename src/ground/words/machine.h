#pragma once

#include "words/message.h"

// clang-format off

/// What the desktop does not do.
namespace kestrova::Msg
{

inline constexpr Message DesktopOpensNone{"the desktop has no program that opens this. Install one for files of this kind, or choose one in the desktop's settings."};

} // namespace kestrova::Msg
