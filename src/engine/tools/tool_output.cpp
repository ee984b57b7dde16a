#include "tools/tool_output.h"

#include "core/text.h"
#include "words/message.h"

#include <algorithm>
#include <vector>

namespace kestrova
{

namespace
{

constexpr std::size_t mostLines = 10;
constexpr std::size_t longestLine = 200; ///< bytes

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The end of a long line, begun at a whole character.
std::string_view EndOf(std::string_view line)
{
    if (line.size() <= longestLine)
        return line;
    line.remove_prefix(line.size() - longestLine);
    for (int i = 0; i < 3 && IsContinuation(line.front()); ++i)
        line.remove_prefix(1);
    return line;
}

} // namespace

std::string ShownLine(std::string_view line)
{
    std::string shown = Readable(EndOf(line));
    std::erase_if(shown, IsControl);
    return std::string{Trim(shown)};
}

std::string LastLines(std::string_view written)
{
    std::vector<std::string> lines;
    while (!written.empty() && lines.size() < mostLines) {
        const std::size_t end = written.find_last_of("\r\n");
        const std::size_t start = end == std::string_view::npos ? 0 : end + 1;
        if (std::string line = ShownLine(written.substr(start)); !line.empty())
            lines.push_back(std::move(line));
        written = written.substr(0, start == 0 ? 0 : end);
    }
    std::reverse(lines.begin(), lines.end());
    return Join(lines, lineBreak);
}

} // namespace kestrova
