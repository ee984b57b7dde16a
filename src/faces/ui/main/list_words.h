#pragma once

#include "library/library.h"

#include <QString>

/// What the list of levels says beside its levels.
namespace kestrova
{

/// In place of levels, where there are none: why, and what to do. Empty while there are some.
QString WordsForEmptyList(const Archive& archive, const Library& shown, const QString& search,
                          const QString& filter);
/// How many levels there are, how many of them are shown, or how many are chosen.
QString WordsOfCounts(const Library& shown, std::size_t chosen);

} // namespace kestrova
