#pragma once

#include "core/result.h"

namespace kestrova
{

/// What failed and the system's reason, on one line.
std::string WordsOf(const Failure& failure);

} // namespace kestrova
