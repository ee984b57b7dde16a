#pragma once

#include "words/message.h"

// clang-format off

/// What several windows say.
namespace kestrova::Msg
{

inline constexpr Message ProgramName{"Kestrova"};
inline constexpr Message NotAvailableYet{"Not available yet"};

} // namespace kestrova::Msg
