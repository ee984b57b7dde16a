#pragma once

#include <cstdint>
#include <string>

namespace kestrova::platform
{

inline constexpr std::int64_t nsOfSecond = 1'000'000'000;

/// Nanoseconds since 1970, UTC.
std::int64_t NowNs();

/// Nanoseconds of a clock that nobody sets and that stands still while the machine sleeps; it
/// begins anew with every start of the machine.
std::int64_t SteadyNs();

/// A point in time as the wall clock of this place shows it.
struct LocalTime {
    int year = 1970;
    int month = 1; ///< 1 to 12
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};
LocalTime LocalTimeOf(std::int64_t ns);
/// The other way; parts beyond their bounds carry over.
std::int64_t NsOf(const LocalTime& time);

/// Changes with every start of the machine; empty where the system does not tell.
std::string BootId();

} // namespace kestrova::platform
