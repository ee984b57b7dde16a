#pragma once

#include "core/names.h"

namespace kestrova
{

/// By the names alone: `place` is the folder or lies somewhere below it. Links are not followed, so
/// both are handed over resolved where that matters.
bool LiesInside(const Path& place, const Path& folder);

} // namespace kestrova
