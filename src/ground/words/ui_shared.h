#pragma once

#include "words/message.h"

// clang-format off

/// What several windows say.
namespace kestrova::Msg
{

inline constexpr Message FilesOfLevelName{"Files of the level"};
inline constexpr Message ProgramName{"Kestrova"};

} // namespace kestrova::Msg
