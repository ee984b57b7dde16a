#include "tools/tool_table.h"

#include "platform/places.h"
#include "tools/file_names.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A path has up to 4,096 bytes here, and these tools print paths behind a word or two.
constexpr std::size_t lineWithPath = 256 + 4096;
/// The decoder prints the texts of a file's tags, of whatever length, a line each.
constexpr std::size_t lineWithTags = std::size_t{1} << 20;
/// `zip -9` was measured at 7 MB a second and says nothing within a file.
constexpr std::chrono::seconds longestSilence{300};

/// zip 3.0: maximal compression, the folder's name left out, a file that is not there is an error.
/// Without names in the arguments they come by standard input, a line each.
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

/// madplay 0.15.2: the kind stands before the target's name, so that no name is taken for one. It
/// calls garbage and an empty file a success, so the caller looks at what came out.
ToolArguments MadplayArguments(const Path& source, const Path& wave, Checksums checksums)
{
    ToolArguments arguments{source.native(), "-v", "--bit-depth=16", "-S",
                            "-owave:" + wave.native()};
    if (checksums == Checksums::Ignored)
        arguments.emplace_back("-i");
    return arguments;
}

/// lame 3.100: takes what is no wave for raw samples, so the caller looks at the source. Without
/// the picture of bit rates, and ten lines of progress a second.
ToolArguments LameArguments(const Path& wave, const Path& target, const Mp3Settings& settings)
{
    ToolArguments arguments{"--nohist", "--disptime", "0.1", "-b",
                            std::to_string(settings.bitRate)};
    if (settings.channels == 1)
        arguments.emplace_back("-a");
    if (settings.frequency != 0) {
        arguments.emplace_back("--resample");
        arguments.push_back(std::to_string(settings.frequency));
    }
    arguments.push_back(wave.native());
    arguments.push_back(target.native());
    return arguments;
}

const std::vector<ToolRow>& Table()
{
    // Names are UTF-8, and no variable of the player's adds switches.
    static const std::vector<ToolRow> rows{
        {ToolId::Zip,
         "zip",
         "zip",
         {{"LC_ALL", "C.UTF-8"}, {"ZIPOPT", ""}, {"ZIP", ""}},
         {{"adding:"}},
         lineWithPath,
         longestSilence,
         true, // stopped at the last name it would remove its unfinished file
         0,
         {},
         ZipArguments,
         nullptr,
         nullptr,
         nullptr},
        {ToolId::Unzip,
         "unzip",
         "unzip",
         {{"LC_ALL", "C.UTF-8"}, {"UNZIPOPT", ""}, {"UNZIP", ""}},
         {{"inflating:"}, {"extracting:"}, {"creating:"}},
         lineWithPath,
         longestSilence,
         false,
         1, // a warning: an empty zip, names with backslashes
         {"skipping:"},
         nullptr,
         UnzipArguments,
         UnzipListArguments,
         ParseZipListing},
        {ToolId::Bsdtar,
         "bsdtar",
         "libarchive-tools",
         {{"LC_ALL", "C.UTF-8"}, {"TAR_READER_OPTIONS", ""}},
         {{"x ", true}},
         lineWithPath,
         longestSilence,
         false,
         0,
         {},
         nullptr,
         TarArguments,
         TarListArguments,
         ParseTarListing},
        {ToolId::Madplay,
         "madplay",
         "madplay",
         {{"LC_ALL", "C.UTF-8"}},
         {},
         lineWithTags,
         longestSilence,
         false,
         0,
         {},
         nullptr,
         nullptr,
         nullptr,
         nullptr,
         MadplayArguments},
        {ToolId::Lame,
         "lame",
         "lame",
         {{"LC_ALL", "C.UTF-8"}, {"LAMEOPT", ""}},
         {},
         lineWithPath,
         longestSilence,
         false,
         0,
         {},
         nullptr,
         nullptr,
         nullptr,
         nullptr,
         nullptr,
         LameArguments},
    };
    return rows;
}

bool IsExecutable(const Path& file)
{
    constexpr std::uint32_t anyExecute = 0111;
    const platform::FileFacts facts = platform::FactsOf(file);
    return facts.kind == platform::FileKind::File && (facts.mode & anyExecute) != 0;
}

} // namespace

const ToolRow& RowOf(ToolId tool)
{
    return Table()[static_cast<std::size_t>(tool)];
}

ToolId UnpackerOf(const Path& package)
{
    const std::vector<std::string> endings = Split(OnDisk::PackageEndings, '|');
    const bool other = std::any_of(endings.begin(), endings.end(), [&](const std::string& ending) {
        return EndsWithName(package.filename().native(), ending);
    });
    return other ? ToolId::Bsdtar : ToolId::Unzip;
}

Path FindTool(Session& session, const ToolRow& row)
{
    const Path own = ResolvePath(session.programFolder / row.name);
    return IsExecutable(own) ? platform::AbsolutePath(own) : session.machine.FindTool(row.name);
}

std::string ComplaintIn(const ToolRow& row, std::string_view output)
{
    // Lists may have a million lines, complaints are rare.
    if (std::none_of(row.complaints.begin(), row.complaints.end(), [&](std::string_view complaint) {
            return output.find(complaint) != std::string_view::npos;
        }))
        return {};
    for (std::string& line : Split(output, '\n')) {
        std::erase(line, '\r');
        const std::string_view words = Trim(line);
        for (const std::string_view complaint : row.complaints)
            if (words.starts_with(complaint))
                return std::string{words};
    }
    return {};
}

} // namespace kestrova
