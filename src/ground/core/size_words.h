#pragma once

#include <string>

namespace kestrova
{

/// As `FormatSize`, for within a sentence, where a number alone would not be taken for bytes.
std::string SizeInWords(double bytes);

} // namespace kestrova
