#include "tools/line_handlers.h"

#include "core/text.h"
#include "words/tools.h"

#include <algorithm>

namespace kestrova
{

namespace
{

class FileCounter : public LineHandler
{
public:
    explicit FileCounter(std::span<const ItemMark> marks) : marks_(marks) {}
    LineAnswer Feed(std::string_view line, std::uint64_t total) override
    {
        const bool names = std::any_of(marks_.begin(), marks_.end(), [&](const ItemMark& mark) {
            const std::size_t place = FindFolded(line, mark.word);
            return mark.leads ? place == 0 : place != std::string_view::npos;
        });
        if (!names)
            return {{}, total, true};
        return {++count_, total, true};
    }

protected:
    std::uint64_t count_ = 0;

private:
    std::span<const ItemMark> marks_;
};

/// The last name ends the run: its files are in the zip by then, as far as this handler knows.
class LastNameStops : public FileCounter
{
public:
    using FileCounter::FileCounter;
    LineAnswer Feed(std::string_view line, std::uint64_t total) override
    {
        LineAnswer answer = FileCounter::Feed(line, total);
        answer.goOn = count_ != total;
        return answer;
    }
};

/// ` 00:01:03 Layer III, …`: what was decoded so far, in seconds; hours are passed over.
class PlayedTime : public LineHandler
{
public:
    LineAnswer Feed(std::string_view line, std::uint64_t total) override
    {
        constexpr std::size_t shortest = 9;
        constexpr std::size_t firstColon = 3;
        constexpr std::size_t secondColon = 6;
        if (line.size() < shortest || line[firstColon] != ':' || line[secondColon] != ':')
            return {{}, total, true};
        const std::int32_t minutes = LeadingNumber(line.substr(firstColon + 1));
        const std::int32_t seconds = LeadingNumber(line.substr(secondColon + 1));
        if (minutes < 0 || seconds < 0 || (minutes == minutes_ && seconds == seconds_))
            return {{}, total, true};
        minutes_ = minutes;
        seconds_ = seconds;
        return {static_cast<std::uint64_t>(minutes) * 60 + static_cast<std::uint64_t>(seconds),
                total, true};
    }

private:
    std::int32_t minutes_ = -1;
    std::int32_t seconds_ = -1;
};

/// `100/8336   ( 1%)| …`: the percentage between "(" and "%)".
class PercentInBrackets : public LineHandler
{
public:
    LineAnswer Feed(std::string_view line, std::uint64_t total) override
    {
        constexpr std::uint64_t all = 100;
        const std::size_t open = line.find('(');
        const std::size_t close = line.find("%)");
        if (close == std::string_view::npos || open > close)
            return {{}, total, true};
        const std::int32_t percent = LeadingNumber(line.substr(open + 1));
        return {static_cast<std::uint64_t>(std::max(percent, 0)), all, true};
    }
};

} // namespace

std::unique_ptr<LineHandler> MakeLineHandler(std::string_view name, std::span<const ItemMark> marks)
{
    if (name == Msg::HandlerUnzip.text)
        return std::make_unique<FileCounter>(marks);
    if (name == Msg::HandlerZip.text)
        return std::make_unique<LastNameStops>(marks);
    if (name == Msg::HandlerMadPlay.text)
        return std::make_unique<PlayedTime>();
    if (name == Msg::HandlerLame.text)
        return std::make_unique<PercentInBrackets>();
    return nullptr;
}

} // namespace kestrova
