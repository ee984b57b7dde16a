#pragma once

#include <string>

namespace kestrova
{

/// `1024`, `1 Kb`, `1.5 Mb`, as the told texts have sizes: above each power by strict comparison,
/// Kb without a fraction.
std::string FormatSize(double bytes);

/// `1024 bytes`, `1 KB`, `1.5 MB`: the same for all words of our own.
std::string SizeInWords(double bytes);

} // namespace kestrova
