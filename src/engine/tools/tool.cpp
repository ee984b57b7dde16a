#include "tools/tool.h"

#include "core/text.h"

#include <algorithm>

namespace kestrova
{

std::string ComplaintIn(const Tool& tool, std::string_view output)
{
    // Lists may have a million lines, complaints are rare.
    if (std::none_of(tool.complaints.begin(), tool.complaints.end(),
                     [&](std::string_view complaint) {
                         return output.find(complaint) != std::string_view::npos;
                     }))
        return {};
    for (std::string& line : Split(output, '\n')) {
        std::erase(line, '\r');
        const std::string_view words = Trim(line);
        for (const std::string_view complaint : tool.complaints)
            if (words.starts_with(complaint))
                return std::string{words};
    }
    return {};
}

} // namespace kestrova
