#include "history/room_needed.h"

#include "core/look.h"

#include <algorithm>

namespace kestrova
{

void RoomNeeded::Add(const Path& file, std::uint64_t size)
{
    OfFolder& room = folders_[file.parent_path()];
    room.largest = std::max(room.largest, size);
    room.more += size - std::min(size, FileSize(file));
}

Status RoomNeeded::IsThere(Machine& machine) const
{
    for (const auto& [folder, room] : folders_)
        if (const auto free = machine.FreeSpace(folder); free && *free < room.largest + room.more)
            return MakeFailure(ErrorCode::NoSpace, TextOf(folder),
                               std::make_error_code(std::errc::no_space_on_device));
    return {};
}

} // namespace kestrova
