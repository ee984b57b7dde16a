#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

/// What turns the lines of a tool into progress. A handler is chosen by its name, which is data:
/// a name of the table.
namespace kestrova
{

/// What stands in a line that names one file; case is ignored.
struct ItemMark {
    std::string_view word;
    bool leads = false; ///< the line must begin with it
};

struct LineAnswer {
    std::optional<std::uint64_t> done; ///< where the bar goes; no value leaves it
    std::uint64_t total = 0;
    bool goOn = true; ///< False asks to stop the tool
};

/// The handler of one run; a new one begins at nothing.
class LineHandler
{
public:
    virtual ~LineHandler() = default;
    virtual LineAnswer Feed(std::string_view line, std::uint64_t total) = 0;
};

/// No value for a name that is none of the four. `marks` are those of the tool that runs.
std::unique_ptr<LineHandler> MakeLineHandler(std::string_view name,
                                             std::span<const ItemMark> marks);

} // namespace kestrova
