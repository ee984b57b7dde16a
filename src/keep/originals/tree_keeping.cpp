#include "originals/tree_keeping.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/size_words.h"
#include "words/originals.h"

#include <atomic>

namespace kestrova
{

namespace
{

/// The backup holds the file's bytes: it was copied when they were in the file last, which no
/// program can pretend, or both are read.
bool BackupHas(const Folders& folders, const StandingFile& file, const Heartbeat& heartbeat)
{
    const Path original = ResolvePath(folders.Backup() / file.name);
    platform::FileFacts facts;
    if (platform::Look(original, facts) || facts.kind != platform::FileKind::File ||
        facts.size != file.size)
        return false;
    if (facts.modifiedNs == file.modifiedNs && file.changedNs < facts.changedNs)
        return true;
    return SameContent(folders.trle / file.name, original, heartbeat);
}

} // namespace

bool MarkWhatBackupLacks(const Folders& folders, StandingTree& tree, ProgressScope& progress)
{
    std::atomic<bool> stopped{false};
    std::atomic<std::size_t> done{0};
    const bool all = RunOnAllCores(
        tree.files.size(),
        [&](std::size_t i) {
            tree.files[i].kept =
                !BackupHas(folders, tree.files[i], [&] { return !stopped.load(); });
            ++done;
        },
        [&] {
            progress.SetBar(done, tree.files.size());
            stopped = !progress.Step();
            return !stopped;
        });
    return all && !stopped;
}

std::uint64_t BytesOfKept(const StandingTree& tree)
{
    std::uint64_t bytes = 0;
    for (const StandingFile& file : tree.files)
        bytes += file.kept ? file.size : 0;
    return bytes;
}

Status RoomForKept(Machine& machine, std::uint64_t bytes, const Path& place, std::uint64_t spare)
{
    const auto free = machine.FreeSpace(place);
    if (!free || *free >= bytes + spare)
        return {}; // where nobody can tell, the copying will
    return Failure{
        ErrorCode::Refused, TextOf(place),
        GetMsg(Msg::HandoverNoRoom, {SizeInWords(static_cast<double>(bytes + spare)), TextOf(place),
                                     SizeInWords(static_cast<double>(*free))})};
}

Status CopyKept(const Path& folder, const StandingFile& file, const Path& copy,
                ProgressScope& progress)
{
    if (auto made = MakeFolders(copy.parent_path()); !made)
        return made;
    CopyOptions options{Verify::Content};
    options.progress = [&](std::uint64_t) { return progress.Step(); };
    options.spelled = true;
    return CopyFileOver(folder / file.name, copy, options);
}

} // namespace kestrova
