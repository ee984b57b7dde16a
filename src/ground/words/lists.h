#pragma once

#include "words/message.h"

// clang-format off

/// What lists say of which nothing is chosen.
namespace kestrova::Msg
{

inline constexpr Message NoSelectedItem{"No selected item"};
inline constexpr Message NoItemSelected{"No item selected"};

} // namespace kestrova::Msg
