#include "core/name_list.h"

#include "core/text.h"
#include "words/core.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace kestrova
{

namespace
{

constexpr std::size_t mostNames = 10;
constexpr std::size_t longestName = 120; ///< bytes

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The beginning and the end of a long name, both at whole characters.
std::string Shortened(const std::string& name)
{
    if (name.size() <= longestName)
        return name;
    std::size_t head = longestName / 2;
    std::size_t tail = name.size() - longestName / 2;
    while (head > 0 && IsContinuation(name[head]))
        --head;
    while (tail < name.size() && IsContinuation(name[tail]))
        ++tail;
    return name.substr(0, head) + GetMsg(Msg::NameLeftPart) + name.substr(tail);
}

} // namespace

std::string ShownNames(const std::vector<std::string>& names)
{
    std::vector<std::string> shown;
    std::unordered_set<std::string_view> known;
    for (const std::string& name : names)
        if (known.insert(name).second && known.size() <= mostNames)
            shown.push_back(Shortened(OnOneLine(Readable(name))));
    if (known.size() > mostNames)
        shown.push_back(GetMsg(Msg::AndMoreFiles, {std::to_string(known.size() - mostNames)}));
    return Join(shown, ", ");
}

std::string ShownLines(const std::vector<std::string>& lines)
{
    constexpr std::size_t mostLines = 20;
    std::vector<std::string> shown{
        lines.begin(),
        lines.begin() + static_cast<std::ptrdiff_t>(std::min(lines.size(), mostLines))};
    if (lines.size() > mostLines)
        shown.push_back(GetMsg(Msg::AndMoreFiles, {std::to_string(lines.size() - mostLines)}));
    return Join(shown, "\n");
}

} // namespace kestrova
