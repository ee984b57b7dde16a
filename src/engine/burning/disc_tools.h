#pragma once

#include "burning/disc_files.h"
#include "core/result.h"
#include "tools/tools.h"

#include <span>
#include <string_view>

/// The outside programs that make images and burn discs, a row each, in the order in which they are
/// looked for.
namespace kestrova
{

/// How a tool owns up to what it could not do.
struct ToolVoice {
    std::string_view name{}; ///< leads its lines
    std::vector<std::string_view> errors{};
    std::vector<std::string_view> warnings{};
    std::vector<std::string_view> harmless{}; ///< in a warning that is none
};

struct ImageTool {
    Tool tool;
    ToolVoice voice;
    ToolArguments words{};         ///< in front of all others
    std::uint64_t largestFile = 0; ///< bytes; a larger one it would leave out, or give up at
};

struct BurnTool {
    Tool tool;
    ToolVoice voice;
    ToolArguments words{};    ///< in front of all others
    bool emulates = false;    ///< can write to a file
    bool tellsTimes = false;  ///< prints all the times by which a burn is judged
    ToolArguments emulated{}; ///< further words for a file
};

std::span<const ImageTool> ImageTools();
std::span<const BurnTool> BurnTools();
/// The first that is there; null when none is.
const ImageTool* FindImageTool(const Tools& tools);
/// The first that is there and can write to that kind of device.
const BurnTool* FindBurnTool(const Tools& tools, bool emulated);

/// The words for an image that goes to `target`, to standard output when that is empty. The files
/// come as `FileList` on standard input.
ToolArguments ImageWords(const ImageTool& row, const BurnSettings& settings, const Path& target);
/// A line for each file: `target=source`.
std::string FileList(const std::vector<DiscFile>& files);
/// Why this tool cannot put these files and texts on a disc.
Status CanHold(const ImageTool& row, const BurnSettings& settings,
               const std::vector<DiscFile>& files);

/// The words for a burn of `source`, a path or "-" for standard input, of which `bytes` will come.
ToolArguments BurnWords(const BurnTool& row, const BurnSettings& settings, const Path& medium,
                        const std::string& source, std::uint64_t bytes);
ToolArguments BlankWords(const BurnTool& row, const BurnSettings& settings,
                         const std::string& extent);

/// The line with which a tool tells what went wrong; empty when it tells nothing.
std::string ErrorIn(const ToolVoice& voice, std::string_view output);
std::string WarningIn(const ToolVoice& voice, std::string_view output);
/// What a burning tool says of a failure, a drive's own words if it has none.
std::string ScanToolErrors(const ToolVoice& voice, std::string_view output);

} // namespace kestrova
