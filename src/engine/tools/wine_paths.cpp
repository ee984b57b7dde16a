#include "tools/wine_paths.h"

#include "core/text.h"
#include "platform/places.h"
#include "platform/real_path.h"
#include "platform/user_folders.h"
#include "tools/enclosure.h"
#include "tools/file_names.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
#include "tools/wine_server.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Of a first start, which makes the prefix; one that is cut short leaves half a prefix.
constexpr std::chrono::minutes longestAsking{5};

/// Where a drive of the prefix leads; empty when it has none of that letter.
Path FolderOfDrive(const Path& prefix, char letter)
{
    Path real;
    if (!platform::RealPath(prefix / OnDisk::WineDrivesFolder / (std::string{letter} + ':'), real))
        return real;
    if (letter == 'c')
        return prefix / OnDisk::WineDriveFolder;
    const bool isThere =
        platform::FactsOf(prefix / OnDisk::WineDrivesFolder).kind != platform::FileKind::Missing;
    return letter == 'z' && !isThere ? Path{"/"} : Path{};
}

/// What of a path lies behind the folder; nothing when it does not lie there.
std::optional<Path> Below(const Path& folder, const Path& path)
{
    const Path relative = path.lexically_relative(folder);
    if (relative.empty() || *relative.begin() == "..")
        return std::nullopt;
    return relative == "." ? Path{} : relative;
}

bool IsPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char letter) { return letter > ' ' && letter <= '~'; });
}

/// A server that this starts would outlive the answer, and hold up who is shut in next. One that is
/// at work already is asked instead.
void ShutIn(const Tools& tools, const Path& prefix, const Path& folder, platform::Launch& launch)
{
    constexpr std::chrono::seconds forHelpers{5};
    const Path encloser = WineServerRuns(prefix) ? Path{} : EncloserOf(tools);
    if (!encloser.empty() && MakeFolders(prefix)) // what is wrong with it Wine says
        launch = Enclosed(encloser, tools, launch, {{prefix}, {folder}}, forHelpers);
}

/// The path as it is where Wine has no answer.
std::string ShortForm(const Tools& tools, const Path& prefix, const Path& folder,
                      const std::string& path, ProgressScope& progress)
{
    auto launch = LaunchInPrefix(
        tools, prefix, {std::string{OnDisk::WinePathTool}, std::string{OnDisk::WineShort}, path});
    if (!launch)
        return path;      // the program itself will say why
    launch->folder = "/"; // the prefix need not be there yet
    ShutIn(tools, prefix, folder, *launch);
    ToolOrder order;
    order.launch = std::move(*launch);
    order.name = OnDisk::WinePathTool;
    order.output = ToolOrder::Output::Whole;
    order.limit = longestAsking;
    ToolRun run{std::move(order)};
    if (run.Start()) {
        const WatchedRun watched{run, &progress, true, {}, {}};
        RunToEnds({&watched, 1});
    }
    const std::string& output = run.Report().output;
    const std::string answer = output.substr(0, output.find_first_of("\r\n"));
    return run.Report().status && !answer.empty() && IsPlain(answer) ? answer : path;
}

} // namespace

std::string WindowsPath(const Path& prefix, const Path& path)
{
    Path place;
    if (platform::RealPathSoFar(path, place))
        place = platform::AbsolutePath(path);
    std::string best{OnDisk::WineNoDrive};
    best += ReplaceAll(place.native(), "/", "\\");
    std::size_t reach = 0;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const Path folder = FolderOfDrive(prefix, letter);
        const auto below = folder.empty() ? std::nullopt : Below(folder, place);
        if (!below || folder.native().size() <= reach)
            continue;
        reach = folder.native().size();
        best = std::string{static_cast<char>(letter - 'a' + 'A')} + ":\\" +
               ReplaceAll(below->native(), "/", "\\");
    }
    return best;
}

std::string PathForProgram(const Path& program, const Path& path)
{
    return IsWindowsProgram(program) ? WindowsPath(WinePrefixFor(program), path)
                                     : platform::AbsolutePath(path).native();
}

std::string ShortPathForProgram(const Tools& tools, const Path& program, const Path& file,
                                ProgressScope& progress)
{
    if (!IsWindowsProgram(program))
        return platform::AbsolutePath(file).native();
    const Path prefix = WinePrefixFor(program);
    const std::string whole = WindowsPath(prefix, file);
    const std::size_t end = whole.rfind('\\');
    const std::string folder = whole.substr(0, end);
    const std::string name = whole.substr(end);
    return (IsPlain(folder) ? folder
                            : ShortForm(tools, prefix, file.parent_path(), folder, progress)) +
           name;
}

} // namespace kestrova
