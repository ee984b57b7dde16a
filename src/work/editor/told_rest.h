#pragma once

#include "originals/loan_rest.h"

namespace kestrova
{

/// Tells what a compiler did in the Level Editor's folder beside its work, all of which is undone
/// but for what was too large to be kept first.
void TellRest(Host& host, const RestReturn& rest);

} // namespace kestrova
