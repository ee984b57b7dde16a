#pragma once

#include "formats/tool_listing.h"
#include "packages/package_lines.h"
#include "tools/tools.h"

/// The outside tools that packages go through: what each is called, told, and how it is judged.
namespace kestrova
{

enum class Unpacker { Unzip, Bsdtar };

/// What a package is unpacked with.
struct UnpackOrder {
    const Path& package;
    const Path& folder;
    bool junkPaths = false;
    const std::string& page;              ///< of names that have none; empty: as the tool thinks
    const std::vector<std::string>& skip; ///< entries that stay packed, by their exact names
};

struct UnpackTool {
    Unpacker id;
    Tool tool;
    std::vector<ItemMark> marks; ///< of a line that names one file
    /// What the arguments become. All paths are absolute, so none is taken for a switch.
    ToolArguments (*unpack)(const UnpackOrder& order);
    /// `charset`: the code page of names that have none of their own; empty: as the tool thinks.
    ToolArguments (*list)(const Path& package, const std::string& charset);
    std::vector<PackageEntry> (*parseList)(std::string_view text);
};

const UnpackTool& ToolOf(Unpacker unpacker);

/// The tool that reads a package of this name: `unzip` but for the kinds that only `bsdtar` knows.
Unpacker UnpackerOf(const Path& package);

/// True for a name that only a package has: `.zip`, `.7z`, `.tar.gz` …
bool IsPackage(const Path& file);

/// The patterns of all packages that can be read, parted by semicolons: `*.zip;*.7z` …
std::string PackagePatterns();

struct PackTool {
    Tool tool;
    std::vector<ItemMark> marks;
    /// `package` is absolute. Without `names` they come by standard input, a line each.
    ToolArguments (*pack)(const Path& package, const std::vector<std::string>& names);
};

const PackTool& ZipTool();

/// All of them.
std::vector<const Tool*> PackageTools();

} // namespace kestrova
