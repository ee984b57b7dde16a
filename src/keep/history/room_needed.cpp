#include "history/room_needed.h"

#include "core/look.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// A folder that is yet to be made comes onto the disk of the one above it.
std::uint64_t DiskOf(Path folder)
{
    auto facts = platform::FactsOf(folder);
    while (facts.kind == platform::FileKind::Missing && folder.has_relative_path()) {
        folder = folder.parent_path();
        facts = platform::FactsOf(folder);
    }
    return facts.device;
}

} // namespace

void RoomNeeded::Add(const Path& file, std::uint64_t size)
{
    Room& room = folders_[file.parent_path()];
    room.largest = std::max(room.largest, size);
    room.more += size - std::min(size, FileSize(file));
}

Status RoomNeeded::IsThere(Machine& machine) const
{
    std::map<std::uint64_t, std::pair<Path, Room>> disks;
    for (const auto& [folder, room] : folders_) {
        auto& [first, all] = disks.try_emplace(DiskOf(folder), folder, Room{}).first->second;
        all.largest = std::max(all.largest, room.largest);
        all.more += room.more;
    }
    for (const auto& [disk, needs] : disks)
        if (const auto free = machine.FreeSpace(needs.first);
            free && *free < needs.second.largest + needs.second.more)
            return MakeFailure(ErrorCode::NoSpace, TextOf(needs.first),
                               std::make_error_code(std::errc::no_space_on_device));
    return {};
}

} // namespace kestrova
