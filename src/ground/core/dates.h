#pragma once

#include <cstdint>
#include <string>

namespace kestrova
{

/// Days since 30 December 1899, local time, as dates stand in binary records.
double DateSerialOf(std::int64_t ns);
/// `2026-11-21 14:05:09`, local time.
std::string DateText(std::int64_t ns);

} // namespace kestrova
