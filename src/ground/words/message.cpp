#include "words/message.h"

#include <cstdlib>
#include <iterator>

namespace kestrova
{

namespace
{

constexpr std::string_view rows[] = {
#define KV_MSG(name, text) text,
#include "words/messages.def"
#undef KV_MSG
};

constexpr int firstRow = static_cast<int>(Msg::BeforeFirst) + 1;
static_assert(static_cast<int>(Msg::BehindLast) - firstRow == static_cast<int>(std::size(rows)));

} // namespace

std::string_view RowText(Msg id)
{
    const int row = static_cast<int>(id) - firstRow;
    if (row < 0 || row >= static_cast<int>(std::size(rows)))
        std::abort(); // a row that does not exist is a fault of the program
    return rows[row];
}

std::string GetMsg(Msg id, std::initializer_list<std::string_view> args)
{
    std::string text{RowText(id)};
    int number = 0;
    for (const std::string_view arg : args) {
        const std::string marker = "~" + std::to_string(++number);
        if (const auto place = text.find(marker); place != std::string::npos)
            text.replace(place, marker.size(), arg);
    }
    return text;
}

} // namespace kestrova
