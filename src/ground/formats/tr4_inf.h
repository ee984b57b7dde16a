#pragma once

#include "core/result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// `tr4.inf` of a level's folder: true names, dates and sizes of its `.tr4` files, however they are
/// stored. A 32-bit count, then per entry 92 bytes; a longer file has an old tail, the count rules.
///
///      0   80  file name
///     80    8  date, days since 30 December 1899, local time
///     88    4  size in bytes, not compressed
namespace kestrova
{

struct Tr4Entry {
    std::string name;
    double date = 0;
    std::int32_t size = 0;
};

Result<std::vector<Tr4Entry>> ParseTr4Inf(std::string_view bytes);
std::string FormatTr4Inf(const std::vector<Tr4Entry>& entries);

} // namespace kestrova
