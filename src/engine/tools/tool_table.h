#pragma once

#include "formats/tool_listing.h"
#include "session/session.h"
#include "tools/line_handlers.h"

#include <chrono>

/// The outside tools: one row each. What differs between tools stands here and nowhere else.
namespace kestrova
{

/// Frames whose checksum does not match are silenced, or played as they are.
enum class Checksums { Heeded, Ignored };

enum class ToolId { Zip, Unzip, Bsdtar, Madplay, Lame };

using ToolArguments = std::vector<std::string>;

/// What a package is unpacked with.
struct UnpackOrder {
    const Path& package;
    const Path& folder;
    bool junkPaths = false;
    const std::string& page;              ///< of names that have none; empty: as the tool thinks
    const std::vector<std::string>& skip; ///< entries that stay packed, by their exact names
};

struct ToolRow {
    ToolId id;
    /// The executable: in the program's folder, otherwise on the system's path.
    const char* name;
    const char* package; ///< the Debian package that brings it
    /// Set on top of the program's own variables.
    std::vector<std::pair<std::string, std::string>> environment;
    std::vector<ItemMark> marks; ///< of a line that names one file
    std::size_t lineLimit;       ///< characters
    /// Without any output for so long it counts as hung.
    std::chrono::seconds silence;
    /// The handler's stop at the last name is no reason to stop this tool.
    bool ignoresHandlerStop;
    int worstSuccess; ///< the highest exit code that stands for work done
    /// Leading words of a line with which the tool owns up to work that it left out.
    std::vector<std::string_view> complaints;

    /// What the arguments of each use become; null for a use that the tool does not have. All
    /// paths are absolute, so none is taken for a switch.
    ToolArguments (*pack)(const Path& package, const std::vector<std::string>& names);
    ToolArguments (*unpack)(const UnpackOrder& order);
    /// `charset`: the code page of names that have none of their own; empty: as the tool thinks.
    ToolArguments (*list)(const Path& package, const std::string& charset);
    std::vector<PackageEntry> (*parseList)(std::string_view text);
    ToolArguments (*decode)(const Path& source, const Path& wave, Checksums checksums) = nullptr;
    ToolArguments (*encode)(const Path& wave, const Path& target,
                            const Mp3Settings& settings) = nullptr;
};

const ToolRow& RowOf(ToolId tool);
/// The tool that reads a package of this name: `unzip` but for the kinds that only `bsdtar` knows.
ToolId UnpackerOf(const Path& package);
/// The program that stands for the tool here; empty when there is none.
Path FindTool(Session& session, const ToolRow& row);
/// The first line of the output that is a complaint; empty when there is none.
std::string ComplaintIn(const ToolRow& row, std::string_view output);

} // namespace kestrova
