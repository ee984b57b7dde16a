#include "packages/package_tools.h"

#include "core/file_kinds.h"
#include "core/text.h"
#include "packages/file_names.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// zip 3.0: maximal compression, the folder's name left out, a file that is not there is an error.
ToolArguments ZipArguments(const Path& package, const std::vector<std::string>& names)
{
    ToolArguments arguments{"-9", "-j", "-MM", package.native()};
    if (names.empty())
        arguments.emplace_back("-@");
    arguments.insert(arguments.end(), names.begin(), names.end());
    return arguments;
}

ToolArguments UnzipArguments(const UnpackOrder& order)
{
    ToolArguments arguments{"-o", order.package.native(), "-d", order.folder.native()};
    if (order.junkPaths)
        arguments.insert(arguments.begin(), "-j");
    return arguments;
}

/// Without the archive's comment, which could look like a list.
ToolArguments UnzipListArguments(const Path& package, const std::string&)
{
    return {"-l", "-q", package.native()};
}

/// A password that is wrong ends the question for one, which without any input has no end.
constexpr const char* noPassword = "-";

void AddCharset(ToolArguments& arguments, const std::string& charset)
{
    if (charset.empty())
        return;
    arguments.emplace_back("--options");
    arguments.push_back("hdrcharset=" + charset);
}

/// A pattern that fits this name alone, and nothing below it.
std::string ExactPattern(const std::string& name)
{
    std::string pattern = "^";
    for (const char c : name) {
        if (std::string_view{"*?[]\\$^"}.find(c) != std::string_view::npos)
            pattern += '\\';
        pattern += c;
    }
    return pattern + "$";
}

/// Rights, owners and marks of another system stay behind; so do the folders when they are junk.
ToolArguments TarArguments(const UnpackOrder& order)
{
    ToolArguments arguments{"-x",
                            "-v",
                            "--no-same-owner",
                            "--no-same-permissions",
                            "--no-acls",
                            "--no-fflags",
                            "--no-xattrs",
                            "--passphrase",
                            noPassword,
                            "-f",
                            order.package.native(),
                            "-C",
                            order.folder.native()};
    if (order.junkPaths) {
        arguments.emplace_back("-s");
        arguments.emplace_back("#.*/##");
    }
    for (const std::string& name : order.skip) {
        arguments.emplace_back("--exclude");
        arguments.push_back(ExactPattern(name));
    }
    AddCharset(arguments, order.page);
    return arguments;
}

ToolArguments TarListArguments(const Path& package, const std::string& charset)
{
    ToolArguments arguments{"-t",       "-v", "--numeric-owner", "--passphrase",
                            noPassword, "-f", package.native()};
    AddCharset(arguments, charset);
    return arguments;
}

const UnpackTool& Unzip()
{
    // Names are UTF-8, and no variable of the player's adds switches.
    static const UnpackTool unzip{
        .id = Unpacker::Unzip,
        .tool = {.name = "unzip",
                 .package = "unzip",
                 .environment = {{"LC_ALL", "C.UTF-8"}, {"UNZIPOPT", ""}, {"UNZIP", ""}},
                 .worstSuccess = 1, // a warning: an empty zip, names with backslashes
                 .complaints = {"skipping:"}},
        .marks = {{"inflating:"}, {"extracting:"}, {"creating:"}},
        .unpack = UnzipArguments,
        .list = UnzipListArguments,
        .parseList = ParseZipListing,
    };
    return unzip;
}

const UnpackTool& Bsdtar()
{
    static const UnpackTool bsdtar{
        .id = Unpacker::Bsdtar,
        .tool = {.name = "bsdtar",
                 .package = "libarchive-tools",
                 .environment = {{"LC_ALL", "C.UTF-8"}, {"TAR_READER_OPTIONS", ""}}},
        .marks = {{"x ", true}},
        .unpack = TarArguments,
        .list = TarListArguments,
        .parseList = ParseTarListing,
    };
    return bsdtar;
}

bool EndsWithOneOf(const Path& file, std::string_view list)
{
    const std::vector<std::string> endings = Split(list, '|');
    return std::any_of(endings.begin(), endings.end(), [&](const std::string& ending) {
        return EndsWithName(file.filename().native(), ending);
    });
}

} // namespace

const UnpackTool& ToolOf(Unpacker unpacker)
{
    return unpacker == Unpacker::Unzip ? Unzip() : Bsdtar();
}

Unpacker UnpackerOf(const Path& package)
{
    return EndsWithOneOf(package, OnDisk::PackageEndings) ? Unpacker::Bsdtar : Unpacker::Unzip;
}

bool IsPackage(const Path& file)
{
    return EndsWithOneOf(file, OnDisk::ZipEndings) || EndsWithOneOf(file, OnDisk::PackageEndings);
}

std::string PackagePatterns()
{
    std::string patterns;
    for (const std::string_view endings : {OnDisk::ZipEndings, OnDisk::PackageEndings})
        for (const std::string& ending : Split(endings, '|'))
            patterns += (patterns.empty() ? "*" : ";*") + ending;
    return patterns;
}

const PackTool& ZipTool()
{
    static const PackTool zip{
        .tool = {.name = "zip",
                 .package = "zip",
                 .environment = {{"LC_ALL", "C.UTF-8"}, {"ZIPOPT", ""}, {"ZIP", ""}},
                 // Stopped at the last name it would remove its unfinished file.
                 .outlivesParser = true},
        .marks = {{"adding:"}},
        .pack = ZipArguments,
    };
    return zip;
}

std::vector<const Tool*> PackageTools()
{
    return {&ZipTool().tool, &Unzip().tool, &Bsdtar().tool};
}

} // namespace kestrova
