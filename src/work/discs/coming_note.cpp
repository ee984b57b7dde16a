#include "discs/coming_note.h"

#include "archive/level_folders.h"
#include "core/parallel.h"
#include "discs/disc_notes.h"
#include "formats/level_folder.h"
#include "platform/file_content.h"
#include "words/disc_creation.h"

#include <atomic>

namespace kestrova
{

namespace
{

/// A file whose hash is wanted.
struct ComingListed {
    Path place;
    NotedFile* noted;
};

/// The discs of the plan with the names and sizes of their files, which are gathered.
Status ListComing(const DiscParts& parts, const DiscPlan& plan, std::vector<NotedDisc>& discs,
                  std::vector<ComingListed>& files)
{
    const auto step = [&] { return parts.progress.Step(); };
    for (const PlannedDisc& disc : plan.Discs()) {
        NotedDisc noted{disc.number, disc.label, CapacityOf(plan.choice.megabytes).medium,
                        {},          0,          {}};
        for (const LevelCode code : disc.levels) {
            auto listed =
                ListFilesToNote(InFolder(LevelHomeOf(parts.folders, code), OnDisk::DirFiles), step);
            if (!listed)
                return listed.Error();
            noted.levels.push_back({code, false, std::move(listed).Value()});
        }
        discs.push_back(std::move(noted));
    }
    for (NotedDisc& disc : discs)
        for (NotedLevel& level : disc.levels)
            for (NotedFile& file : level.files)
                files.push_back({ResolvePath(InFolder(LevelHomeOf(parts.folders, level.code),
                                                      OnDisk::DirFiles)) /
                                     file.name,
                                 &file});
    return {};
}

/// One thread reads, as fast as the disk gives; this one keeps the window alive.
Status HashComing(const DiscParts& parts, const std::vector<ComingListed>& files)
{
    std::uint64_t total = 0;
    for (const ComingListed& file : files)
        total += file.noted->size;
    std::atomic<std::uint64_t> done{0};
    std::atomic<bool> stopped{false};
    Status status;
    RunOnAllCores(
        1,
        [&](std::size_t) {
            for (const ComingListed& file : files) {
                if (stopped)
                    return;
                if (const auto failure = platform::HashOfFile(file.place, file.noted->hash)) {
                    status = MakeFailure(ErrorCode::CannotRead, TextOf(file.place), failure);
                    return;
                }
                done += file.noted->size;
            }
        },
        [&] {
            parts.progress.SetBar(done, total);
            stopped = stopped || !parts.progress.Step();
            return true;
        });
    return stopped ? MakeFailure(ErrorCode::Stopped, {}) : status;
}

} // namespace

Result<DiscNote> NoteOfComing(const DiscParts& parts, const DiscPlan& plan, DiscNote earlier)
{
    parts.progress.SetLabel(GetMsg(Msg::NotingFiles));
    for (NotedDisc& disc : earlier.discs)
        disc.image.clear(); // a place of this machine
    std::vector<NotedDisc> discs;
    std::vector<ComingListed> files;
    if (auto listed = ListComing(parts, plan, discs, files); !listed)
        return listed.Error();
    if (auto hashed = HashComing(parts, files); !hashed)
        return hashed.Error();
    for (NotedDisc& disc : discs)
        earlier.Put(std::move(disc));
    return earlier;
}

bool IsAsAnnounced(const DiscNote& announced, std::int32_t disc, const NotedLevel& compared)
{
    const NotedLevel* said = FindNoted(announced, disc, compared.code);
    return said == nullptr || said->files == compared.files;
}

} // namespace kestrova
