#include "platform/clock.h"

#include "platform/file_content.h"
#include "platform/files.h"

#include <chrono>
#include <ctime>

namespace kestrova::platform
{

std::int64_t NowNs()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

std::int64_t SteadyNs()
{
    using namespace std::chrono;
    return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
}

LocalTime LocalTimeOf(std::int64_t ns)
{
    auto seconds = static_cast<std::time_t>(ns / nsOfSecond);
    if (ns % nsOfSecond < 0)
        --seconds;
    std::tm parts{};
    ::localtime_r(&seconds, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

std::int64_t NsOf(const LocalTime& time)
{
    std::tm parts{};
    parts.tm_year = time.year - 1900;
    parts.tm_mon = time.month - 1;
    parts.tm_mday = time.day;
    parts.tm_hour = time.hour;
    parts.tm_min = time.minute;
    parts.tm_sec = time.second;
    parts.tm_isdst = -1; // as the place has it on that day
    return std::int64_t{::mktime(&parts)} * nsOfSecond;
}

std::string BootId()
{
    std::string text;
    if (ReadAll("/proc/sys/kernel/random/boot_id", text))
        return {};
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

} // namespace kestrova::platform
