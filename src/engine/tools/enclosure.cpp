#include "tools/enclosure.h"

#include "core/inside.h"
#include "core/text.h"
#include "platform/places.h"
#include "platform/real_path.h"
#include "platform/user_folders.h"
#include "tools/file_names.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
#include "words/message.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

using Words = std::vector<std::string>;

/// Bytes; what is written where a hidden folder stood lies in memory.
constexpr std::string_view mostInMemory = "268435456";
constexpr std::chrono::milliseconds longestTrial{5000};
/// A shell tells the end by a signal by this and the signal's number.
constexpr int endedBySignal = 128;
constexpr int mostSignals = 31;

/// The first program inside, which starts the real one. The processes are those inside alone, so
/// it sees what that leaves behind, and waits for it: $0 rounds of a tenth of a second. Wine's
/// server writes down the registry when it is asked to end.
// clang-format off
constexpr std::string_view waiting =
    "\"$@\"\n" // not shown
    "code=$?\n" // not shown
    "exec 2>/dev/null\n" // not shown
    "others() {\n" // not shown
    "    for process in /proc/[0-9]*; do\n" // not shown
    "        case ${process#/proc/} in 1 | $$) continue ;; esac\n" // not shown
    "        name=; read -r name <\"$process/comm\"\n" // not shown
    "        case $name in '' | ~1) ;; *) return 0 ;; esac\n" // not shown
    "    done\n" // not shown
    "    return 1\n" // not shown
    "}\n" // not shown
    "end_servers() {\n" // not shown
    "    found=\n" // not shown
    "    for process in /proc/[0-9]*; do\n" // not shown
    "        name=; read -r name <\"$process/comm\"\n" // not shown
    "        case $name in ~2) kill \"${process#/proc/}\"; found=yes ;; esac\n" // not shown
    "    done\n" // not shown
    "    [ \"$found\" ]\n" // not shown
    "}\n" // not shown
    "round=0\n" // not shown
    "while [ $round -lt \"$0\" ] && others; do sleep 0.1; round=$((round + 1)); done\n" // not shown
    "round=0\n" // not shown
    "while [ $round -lt 50 ] && end_servers; do sleep 0.1; round=$((round + 1)); done\n" // not shown
    "exit $code";
// clang-format on
constexpr std::chrono::milliseconds roundOfWaiting{100};

void Add(Words& words, std::initializer_list<std::string_view> more)
{
    words.insert(words.end(), more.begin(), more.end());
}

std::vector<Path> HiddenFolders(const Tools& tools)
{
    std::vector<Path> folders;
    for (const std::string& folder : Split(OnDisk::HiddenFolders, '|'))
        folders.emplace_back(folder);
    for (const Path& own : {platform::HomeFolder(), tools.programFolder})
        folders.push_back(own);
    std::erase_if(folders, [](const Path& folder) {
        return !folder.is_absolute() || folder == folder.root_path() ||
               platform::FactsOf(folder).kind != platform::FileKind::Folder;
    });
    return folders;
}

bool LiesIn(const Path& path, const std::vector<Path>& folders)
{
    return std::any_of(folders.begin(), folders.end(),
                       [&](const Path& folder) { return LiesInside(path, folder); });
}

class EnclosureWords
{
public:
    explicit EnclosureWords(const Tools& tools) : hidden_(HiddenFolders(tools))
    {
        Add(words, {"--unshare-pid", "--unshare-net", "--ro-bind", "/", "/", "--dev",
                    OnDisk::DeviceFolder, "--proc", "/proc"});
        for (const Path& folder : hidden_)
            Add(words, {"--size", mostInMemory, "--tmpfs", folder.native()});
    }

    /// A place as it is outside; `AddNames` makes the name by which it is asked for.
    void AddPlace(const Path& place, std::string_view how)
    {
        Path real;
        if (!place.is_absolute() || platform::RealPath(place, real))
            return;
        Add(words, {how, real.native(), real.native()});
        bound_.push_back(real);
        const bool isHidden = LiesIn(place, hidden_) || LiesInside(place, OnDisk::DeviceFolder);
        if (real != place && isHidden)
            names_.emplace(place, real);
    }

    /// Names that lead to places elsewhere. What lies below one of them, or in a place that is
    /// there, is there by that.
    void AddNames()
    {
        Path made;
        for (const auto& [name, real] : names_)
            if (!LiesIn(name, bound_) && (made.empty() || !LiesInside(name, made))) {
                Add(words, {"--symlink", real.native(), name.native()});
                made = name;
            }
    }

    Words words;

private:
    std::vector<Path> hidden_;
    std::vector<Path> bound_;
    std::map<Path, Path> names_; ///< a folder before what lies in it
};

constexpr std::string_view toRead = "--ro-bind";
constexpr std::string_view toWrite = "--bind";

/// The way to the screen, and the key to it.
void AddScreen(EnclosureWords& enclosed)
{
    enclosed.AddPlace(Path{OnDisk::ScreenFolder}, toRead);
    Path key = platform::Variable(std::string{OnDisk::ScreenKeyVariable});
    if (key.empty())
        key = platform::HomeFolder() / OnDisk::ScreenKeyName;
    enclosed.AddPlace(key, toRead);
}

/// The files that the launch names, and what lies beside one that is installed in a folder of its
/// own.
void AddProgram(EnclosureWords& enclosed, const platform::Launch& launch)
{
    const Path folder = Path{launch.argv.front()}.parent_path();
    if (folder.filename() == OnDisk::ProgramsFolder && folder.parent_path().has_relative_path())
        enclosed.AddPlace(folder.parent_path(), toRead);
    for (const std::string& word : launch.argv) {
        Path real;
        if (word.starts_with('/') && !platform::RealPath(word, real) &&
            platform::FactsOf(real).kind == platform::FileKind::File)
            enclosed.AddPlace(word, toRead);
    }
}

} // namespace

Path EncloserOf(const Tools& tools)
{
    const Path encloser = tools.findOnPath(std::string{OnDisk::EncloserName});
    if (encloser.empty())
        return {};
    ToolOrder order;
    order.launch.argv = {encloser.native()};
    EnclosureWords enclosed{tools};
    order.launch.argv.insert(order.launch.argv.end(), enclosed.words.begin(), enclosed.words.end());
    order.launch.argv.emplace_back(OnDisk::TrialProgram);
    // An encloser that is killed while it begins leaves its other half waiting for it for ever.
    order.launch.endsByItself = true;
    order.limit = longestTrial;
    ToolRun run{std::move(order)};
    if (run.Start()) {
        const WatchedRun watched{run};
        RunToEnds({&watched, 1});
    }
    const ToolReport& report = run.Report();
    const bool works = report.status && report.end.code == 0 && report.end.signal == 0;
    return works ? encloser : Path{};
}

platform::Launch Enclosed(const Path& encloser, const Tools& tools, const platform::Launch& launch,
                          const Enclosure& enclosure, std::chrono::milliseconds left)
{
    EnclosureWords enclosed{tools};
    AddScreen(enclosed);
    AddProgram(enclosed, launch);
    for (const Path& place : enclosure.readable)
        enclosed.AddPlace(place, toRead);
    for (const Path& place : enclosure.writable)
        enclosed.AddPlace(place, toWrite);
    for (const Path& place : enclosure.guarded)
        enclosed.AddPlace(place, toRead);
    enclosed.AddNames();
    platform::Launch inside = launch;
    inside.argv = {encloser.native(), "--die-with-parent"};
    inside.argv.insert(inside.argv.end(), enclosed.words.begin(), enclosed.words.end());
    if (!launch.folder.empty())
        Add(inside.argv, {"--chdir", launch.folder.native()});
    inside.folder.clear();
    inside.environment.push_back(OwnerMark(tools));
    Add(inside.argv, {"--", OnDisk::SystemShell, "-c",
                      Filled(waiting, {OnDisk::WineHelpers, OnDisk::WineServers}),
                      std::to_string(left / roundOfWaiting)});
    inside.argv.insert(inside.argv.end(), launch.argv.begin(), launch.argv.end());
    return inside;
}

std::pair<std::string, std::string> OwnerMark(const Tools& tools)
{
    Path real;
    if (platform::RealPath(tools.programFolder, real))
        real = tools.programFolder;
    return {std::string{OnDisk::RunOwnerVariable}, real.native()};
}

platform::ChildEnd EndInside(platform::ChildEnd end)
{
    if (end.signal == 0 && end.code > endedBySignal && end.code <= endedBySignal + mostSignals)
        return {0, end.code - endedBySignal};
    return end;
}

} // namespace kestrova
