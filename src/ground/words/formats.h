#pragma once

#include "words/message.h"

// clang-format off

/// First values of records.
namespace kestrova::Msg
{

inline constexpr Message NotReadableTitle{"<NOT READABLE>"};

} // namespace kestrova::Msg
