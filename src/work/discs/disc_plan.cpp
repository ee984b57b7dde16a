#include "discs/disc_plan.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/look.h"
#include "core/text.h"
#include "discs/disc_content.h"
#include "discs/disc_notes.h"
#include "formats/level_folder.h"
#include "platform/files.h"
#include "words/disc_creation.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

constexpr double bytesOfMegabyte = 1048576;
/// What is kept free on each disc, and on the first one beside that for the archive's file.
constexpr int spareMegabytes = 5;
constexpr int archiveMegabytes = 2;

/// What a note holds of a file: each letter of its name may be spelled by three.
constexpr std::uint64_t noteRowBytes = 80;
constexpr std::uint64_t noteBytesOfLetter = 3;

/// Two counts of one disc: the one of the megabytes, and the one of what really fits.
struct Left {
    double bytes = 0;
    double room = 0;

    void Take(const DiscSize& size)
    {
        bytes -= size.bytes;
        room -= static_cast<double>(size.room);
    }
    [[nodiscard]] bool IsOver() const { return bytes < 0 || room < 0; }
};

Left EmptyDisc(int megabytes)
{
    const DiscCapacity capacity = CapacityOf(megabytes);
    return {(megabytes - spareMegabytes) * bytesOfMegabyte,
            static_cast<double>(capacity.medium) - static_cast<double>(emptyDiscBytes)};
}

LevelLeftOut LeaveOut(LevelCode code, const Failure& failure)
{
    if (failure.code == ErrorCode::Missing)
        return {code, GetMsg(Msg::LevelHasNoFiles)};
    if (failure.code == ErrorCode::Refused)
        return {code, GetMsg(Msg::LevelHoldsLink, {failure.subject})};
    return {code, GetMsg(Msg::LevelNotRead, {failure.subject})};
}

std::int32_t LargestDiscOf(const Archive& archive)
{
    std::int32_t largest = 0;
    for (const LevelRecord& level : archive.levels)
        largest = std::max(largest, level.cdNumber);
    return largest;
}

} // namespace

DiscSize& DiscSize::operator+=(const DiscSize& other)
{
    bytes += other.bytes;
    room += other.room;
    note += other.note;
    return *this;
}

Result<DiscSize> DiscSizeOf(const Path& place, const Heartbeat& heartbeat)
{
    const auto facts = LookAt(place);
    if (!facts)
        return facts.Error();
    DiscRoom room;
    if (facts->kind == platform::FileKind::File) {
        room.AddFile(place.filename().native(), facts->size);
        return DiscSize{static_cast<double>(facts->size), room.Bytes()};
    }
    std::vector<std::string> folders;
    const auto files = ListFilesToNote(place, heartbeat, &folders);
    if (!files)
        return files.Error();
    DiscSize size;
    std::set<std::string> names;
    for (const NotedFile& file : *files) {
        if (!names.insert(FoldCase(file.name)).second)
            size.twin = file.name;
        room.AddFile(FileNameOf(file.name), file.size);
        size.bytes += static_cast<double>(file.size);
        size.note += noteRowBytes + noteBytesOfLetter * file.name.size();
    }
    for (const std::string& folder : folders) {
        if (!names.insert(FoldCase(folder)).second)
            size.twin = folder;
        room.AddFolder(FileNameOf(folder));
    }
    size.room = room.Bytes();
    return size;
}

Status DiscPlan::Measure(const Folders& folders, const Archive& archive, ProgressScope& progress)
{
    Take({}, LargestDiscOf(archive));
    listsBytes_ = FileSize(archive.file) + FileSize(ExactNamesFile(archive.header)) +
                  FileSize(DiscNoteOf(folders.levels));
    progress.SetLabel(GetMsg(Msg::ComputeArchiveSize));
    for (std::size_t i = 1; i < archive.levels.size(); ++i) {
        progress.SetBar(i, archive.levels.size());
        const LevelRecord& level = archive.levels[i];
        if (level.cdNumber != 0)
            continue;
        const Path home = LevelHomeOf(folders, level.levelCode);
        auto size = DiscSizeOf(InFolder(home, OnDisk::DirFiles), [&] { return progress.Step(); });
        if (!size && size.Error().code == ErrorCode::Stopped)
            return size.Error();
        if (!size) {
            leftOut_.push_back(LeaveOut(level.levelCode, size.Error()));
            continue;
        }
        if (!size->twin.empty()) {
            leftOut_.push_back({level.levelCode, GetMsg(Msg::LevelHasTwins, {size->twin})});
            continue;
        }
        DiscRoom own; // the level's folder with its index
        own.AddFolder(home.filename().native());
        own.AddFile(OnDisk::FragTr4Inf, FileSize(InFolder(home, OnDisk::FragTr4Inf)));
        size->room += own.Bytes();
        candidates_.push_back({i, level.levelCode, *size});
    }
    return {};
}

void DiscPlan::Take(std::vector<DiscCandidate> candidates, std::int32_t lastDisc)
{
    candidates_ = std::move(candidates);
    leftOut_.clear();
    discs_.clear();
    lastDisc_ = lastDisc;
}

void DiscPlan::Divide()
{
    discs_.clear();
    if (choice.megabytes <= 0)
        return;
    const bool goes = choice.levels && !candidates_.empty();
    if (!goes && !choice.trle && !choice.setup)
        return;
    const auto begin = [&](std::int32_t number) {
        discs_.push_back({number, LabelOfDisc(number), {}, {}, false});
    };
    Left left = EmptyDisc(choice.megabytes);
    begin(lastDisc_ + 1);
    if (choice.levels)
        left.Take({archiveMegabytes * bytesOfMegabyte, RoomOfLists()});
    left.Take(extras);
    discs_.back().size += extras;
    if (choice.levels)
        discs_.back().size.room += RoomOfLists();
    discs_.back().tooLarge = left.IsOver();
    if (!goes)
        return;
    for (const DiscCandidate& level : candidates_) {
        left.Take(level.size);
        if (left.IsOver()) {
            // A first disc without levels has its extras. Any other one has a level, since it
            // begins with one, be that larger than a disc or not.
            begin(discs_.back().number + 1);
            left = EmptyDisc(choice.megabytes);
            left.Take(level.size);
        }
        PlannedDisc& disc = discs_.back();
        disc.levels.push_back(level.code);
        disc.size += level.size;
        disc.tooLarge = disc.tooLarge || left.IsOver();
    }
}

std::uint64_t DiscPlan::RoomOfLists() const
{
    std::uint64_t bytes = listsBytes_;
    for (const DiscCandidate& level : candidates_)
        bytes += level.size.note;
    return std::max(std::uint64_t{archiveMegabytes} << 20, bytes);
}

std::size_t DiscPlan::LevelCount() const
{
    std::size_t count = 0;
    for (const PlannedDisc& disc : discs_)
        count += disc.levels.size();
    return count;
}

std::vector<LevelCode> DiscPlan::TooLarge() const
{
    std::vector<LevelCode> levels;
    for (const PlannedDisc& disc : discs_)
        if (disc.tooLarge)
            levels.insert(levels.end(), disc.levels.begin(), disc.levels.end());
    return levels;
}

std::uint64_t DiscPlan::RoomOfImages() const
{
    std::uint64_t room = 0;
    for (const PlannedDisc& disc : discs_)
        room += disc.size.room + emptyDiscBytes;
    return room;
}

} // namespace kestrova
