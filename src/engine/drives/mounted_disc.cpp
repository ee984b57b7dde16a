#include "drives/mounted_disc.h"

#include "drives/drive_tools.h"
#include "platform/file_content.h"
#include "platform/places.h"
#include "tools/run_to_end.h"
#include "words/drives.h"

#include <fmt/format.h>

namespace kestrova
{

namespace
{

constexpr std::chrono::seconds mountLimit{30};
constexpr std::string_view fuseKind = "fuse.fuseiso";

Status RunShort(const Tools& tools, const Tool& tool, const ToolArguments& arguments,
                ToolReport& report)
{
    return RunToolBatch(tools, tool, arguments, mountLimit, ToolProgressState{}, report);
}

Status RunShort(const Tools& tools, const Tool& tool, const ToolArguments& arguments)
{
    ToolReport report;
    auto done = RunShort(tools, tool, arguments, report);
    return report.trouble == ToolTrouble::NoOutput ? Status{} : done; // these have nothing to say
}

/// True while the folder can be listed: the program behind a mount may have been killed, and the
/// system goes on to tell of the folder itself for a while.
bool Answers(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    return !platform::ListFolder(folder, entries);
}

/// The file behind a loop device; empty when there is none.
std::string FileOfLoop(const Path& device)
{
    std::string file;
    if (platform::ReadAll(Path{"/sys/block"} / device.filename() / "loop" / "backing_file", file))
        return {};
    return file.substr(0, file.find('\n'));
}

Status EndFuse(const Tools& tools, const Path& folder)
{
    if (platform::KindMountedOn(folder) != fuseKind)
        return {};
    const bool answers = Answers(folder);
    if (const auto done = RunShort(tools, FuseUnmount(),
                                   answers ? ToolArguments{"-u", folder.native()}
                                           : ToolArguments{"-u", "-z", folder.native()});
        !done && platform::KindMountedOn(folder) == fuseKind)
        return InWords(done.Error().code, GetMsg(Msg::DiscNotReleased, {TextOf(folder)}),
                       done.Error().reason, done.Error().details);
    return {};
}

Status EndLoop(const Tools& tools, const SeenNote& note)
{
    if (FileOfLoop(note.loop) != note.image)
        return {};
    if (const auto done = UnmountByDesktop(tools, note.loop); !done)
        return done;
    return RunShort(tools, UdisksControl(),
                    {"loop-delete", "-b", note.loop, "--no-user-interaction"});
}

} // namespace

Status MountByFuse(const Tools& tools, const Path& image, const Path& place)
{
    // -n: it keeps no list of its own in the person's home.
    if (const auto done =
            RunShort(tools, FuseIso(), {"-n", image.native(), place.native(), "-o", "ro"});
        !done)
        return done;
    if (platform::KindMountedOn(place) == fuseKind && Answers(place))
        return {};
    // Nobody can read what is seen there, so that it goes, and the folder is free again.
    if (auto ended = EndFuse(tools, place); !ended)
        return ended;
    return MakeFailure(ErrorCode::NotDone, TextOf(place));
}

Status EndStaleMount(const Tools& tools, const Path& place)
{
    return EndFuse(tools, place);
}

Result<Path> LoopDeviceOf(const Tools& tools, const Path& image)
{
    ToolReport report;
    if (const auto done =
            RunShort(tools, UdisksControl(),
                     {"loop-setup", "-r", "-f", image.native(), "--no-user-interaction"}, report);
        !done)
        return done.Error();
    // It says: Mapped file FILE as /dev/loop0.
    constexpr std::string_view before = " as ";
    const auto at = report.output.rfind(before);
    if (at == std::string::npos)
        return MakeFailure(ErrorCode::NotDone, TextOf(image));
    const std::string device = report.output.substr(at + before.size());
    return Path{device.substr(0, device.find_last_not_of(". \r\n") + 1)};
}

Result<Path> MountByDesktop(const Tools& tools, const Path& device)
{
    ToolReport report;
    const auto done = RunShort(tools, UdisksControl(),
                               {"mount", "-b", device.native(), "--no-user-interaction"}, report);
    Path folder = FolderOfMounted(device);
    if (!folder.empty())
        return folder;
    return done ? MakeFailure(ErrorCode::NotDone, TextOf(device)) : done.Error();
}

Status UnmountByDesktop(const Tools& tools, const Path& device)
{
    const Path folder = FolderOfMounted(device);
    if (folder.empty())
        return {};
    if (const auto done = RunShort(tools, UdisksControl(),
                                   {"unmount", "-b", device.native(), "--no-user-interaction"});
        !done && !FolderOfMounted(device).empty())
        return InWords(done.Error().code, GetMsg(Msg::DiscNotReleased, {TextOf(folder)}),
                       done.Error().reason, done.Error().details);
    return {};
}

Path FolderOfMounted(const Path& device)
{
    for (const platform::MountedDrive& mounted : platform::MountedDrives())
        if (mounted.device == device)
            return mounted.folder;
    return {};
}

bool IsMounted(const SeenNote& note)
{
    if (note.way == SeenNote::Way::Loop)
        return FileOfLoop(note.loop) == note.image && FolderOfMounted(note.loop) == note.folder;
    return platform::KindMountedOn(note.folder) == fuseKind && Answers(note.folder);
}

Status EndMount(const Tools& tools, const SeenNote& note)
{
    return note.way == SeenNote::Way::Loop ? EndLoop(tools, note) : EndFuse(tools, note.folder);
}

} // namespace kestrova
