#include "conversion/sound_lines.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

namespace
{

class PlayedTime : public LineParser
{
public:
    explicit PlayedTime(std::uint64_t total) : total_(total) {}
    LineAnswer Feed(std::string_view line) override
    {
        constexpr std::size_t shortest = 9;
        constexpr std::size_t firstColon = 3;
        constexpr std::size_t secondColon = 6;
        if (line.size() < shortest || line[firstColon] != ':' || line[secondColon] != ':')
            return {};
        const std::int32_t minutes = LeadingNumber(line.substr(firstColon + 1));
        const std::int32_t seconds = LeadingNumber(line.substr(secondColon + 1));
        if (minutes < 0 || seconds < 0 || (minutes == minutes_ && seconds == seconds_))
            return {};
        minutes_ = minutes;
        seconds_ = seconds;
        return {static_cast<std::uint64_t>(minutes) * 60 + static_cast<std::uint64_t>(seconds),
                total_, true};
    }

private:
    std::uint64_t total_;
    std::int32_t minutes_ = -1;
    std::int32_t seconds_ = -1;
};

class PercentInBrackets : public LineParser
{
public:
    LineAnswer Feed(std::string_view line) override
    {
        constexpr std::uint64_t all = 100;
        const std::size_t open = line.find('(');
        const std::size_t close = line.find("%)");
        if (close == std::string_view::npos || open > close)
            return {};
        const std::int32_t percent = LeadingNumber(line.substr(open + 1));
        return {static_cast<std::uint64_t>(std::max(percent, 0)), all, true};
    }
};

} // namespace

std::unique_ptr<LineParser> GestioneMadPlay(std::uint64_t total)
{
    return std::make_unique<PlayedTime>(total);
}

std::unique_ptr<LineParser> GestioneLame()
{
    return std::make_unique<PercentInBrackets>();
}

} // namespace kestrova
