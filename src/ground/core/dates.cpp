#include "core/dates.h"

#include "core/files.h"
#include "platform/clock.h"

#include <chrono>
#include <fmt/format.h>

namespace kestrova
{

double DateSerialOf(std::int64_t ns)
{
    using namespace std::chrono;
    const platform::LocalTime local = platform::LocalTimeOf(ns);
    const sys_days day{year{local.year} / month{static_cast<unsigned>(local.month)} /
                       std::chrono::day{static_cast<unsigned>(local.day)}};
    const sys_days first{year{1899} / December / 30};
    const double seconds = local.hour * 3600.0 + local.minute * 60.0 + local.second;
    return static_cast<double>((day - first).count()) + seconds / 86400.0;
}

std::string DateText(std::int64_t ns)
{
    const platform::LocalTime local = platform::LocalTimeOf(ns);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", local.year, local.month, local.day,
                       local.hour, local.minute, local.second);
}

} // namespace kestrova
