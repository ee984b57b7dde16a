#pragma once

#include <string>

namespace kestrova
{

/// What this process leaves in a lock, so that another one can name it.
std::string WordsOfHolder();

} // namespace kestrova
