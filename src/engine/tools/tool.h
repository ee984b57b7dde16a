#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrova
{

using ToolArguments = std::vector<std::string>;

/// A path has up to 4,096 bytes here, and the tools print paths behind a word or two.
constexpr std::size_t lineWithPath = 256 + 4096;
/// `zip -9` was measured at 7 MB a second and says nothing within a file.
constexpr std::chrono::seconds longestSilence{300};

/// An outside program, as the floor that uses it describes it: what holds for all that it is told
/// to do. Rows live as long as the program.
struct Tool {
    /// The executable: in the program's folder, otherwise on the system's path.
    const char* name = "";
    const char* package = ""; ///< the Debian package that brings it
    /// Set on top of the program's own variables.
    std::vector<std::pair<std::string, std::string>> environment{};
    std::size_t lineLimit = lineWithPath; ///< characters
    /// Without any output for so long it counts as hung.
    std::chrono::seconds silence = longestSilence;
    /// The stop of a parser is no reason to stop this tool.
    bool outlivesParser = false;
    int worstSuccess = 0; ///< the highest exit code that stands for work done
    /// Leading words of a line with which the tool owns up to work that it left out.
    std::vector<std::string_view> complaints{};
};

/// The first line of the output that is a complaint; empty when there is none.
std::string ComplaintIn(const Tool& tool, std::string_view output);

} // namespace kestrova
