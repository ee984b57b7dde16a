#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestrova
{

/// What a line of a tool means for whoever waits.
struct LineAnswer {
    std::optional<std::uint64_t> done{}; ///< where the bar goes; no value leaves it
    std::uint64_t total = 0;
    bool goOn = true; ///< False asks to stop the tool
};

/// Turns the lines of one run into progress, and knows nothing of tools, windows or files. A new
/// one begins at nothing.
class LineParser
{
public:
    virtual ~LineParser() = default;
    virtual LineAnswer Feed(std::string_view line) = 0;
};

} // namespace kestrova
