#include "packages/package_lines.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

namespace
{

class FileCounter : public LineParser
{
public:
    FileCounter(std::span<const ItemMark> marks, std::uint64_t total, bool lastStops)
        : marks_(marks), total_(total), lastStops_(lastStops)
    {
    }

    LineAnswer Feed(std::string_view line) override
    {
        const bool names = std::any_of(marks_.begin(), marks_.end(), [&](const ItemMark& mark) {
            const std::size_t place = FindFolded(line, mark.word);
            return mark.leads ? place == 0 : place != std::string_view::npos;
        });
        LineAnswer answer{.total = total_};
        if (names)
            answer.done = ++count_;
        answer.goOn = !lastStops_ || count_ != total_;
        return answer;
    }

private:
    std::span<const ItemMark> marks_;
    std::uint64_t total_;
    bool lastStops_;
    std::uint64_t count_ = 0;
};

} // namespace

std::unique_ptr<LineParser> GestioneUnzip(std::span<const ItemMark> marks, std::uint64_t total)
{
    return std::make_unique<FileCounter>(marks, total, false);
}

std::unique_ptr<LineParser> GestioneZip(std::span<const ItemMark> marks, std::uint64_t total)
{
    return std::make_unique<FileCounter>(marks, total, true);
}

} // namespace kestrova
