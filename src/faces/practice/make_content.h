#pragma once

#include "practice/content.h"

#include <cstdint>
#include <string>

namespace kestrova
{

/// The bytes of one item of a level with that title (in Windows-1252) and style of its pictures;
/// another seed, other data. `scale` is that of data and tunes.
std::string MakeContent(const PracticeItem& item, const std::string& title, int style,
                        std::uint64_t seed, double scale);

/// Which numbers the items of a level are made with: the first one's, and one more for each behind.
std::uint64_t FirstSeedOf(const PracticeLevel& level);

} // namespace kestrova
