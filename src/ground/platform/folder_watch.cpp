#include "platform/folder_watch.h"

#include "platform/last_error.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace kestrova::platform
{

FolderWatch::FolderWatch(FolderWatch&& other) noexcept : handle_(std::exchange(other.handle_, -1))
{
}

FolderWatch& FolderWatch::operator=(FolderWatch&& other) noexcept
{
    std::swap(handle_, other.handle_);
    return *this;
}

FolderWatch::~FolderWatch()
{
    Close();
}

void FolderWatch::Close()
{
    if (handle_ >= 0)
        ::close(std::exchange(handle_, -1));
}

std::error_code FolderWatch::Open(const Path& folder)
{
    Close();
    handle_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (handle_ < 0)
        return LastError();
    constexpr std::uint32_t events = IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
    if (::inotify_add_watch(handle_, folder.c_str(), events | IN_ONLYDIR) >= 0)
        return {};
    const std::error_code failure = LastError();
    Close();
    return failure;
}

std::vector<std::string> FolderWatch::TakeNames()
{
    std::vector<std::string> names;
    std::array<char, 16384> buffer{};
    bool gone = false;
    while (handle_ >= 0 && !gone) {
        const ssize_t got = ::read(handle_, buffer.data(), buffer.size());
        if (got <= 0)
            break;
        for (std::size_t place = 0; place < static_cast<std::size_t>(got);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + place, sizeof event);
            const char* name = buffer.data() + place + sizeof event;
            if (event.len > 0 && std::find(names.begin(), names.end(), name) == names.end())
                names.emplace_back(name);
            gone = gone || (event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) != 0;
            place += sizeof event + event.len;
        }
    }
    if (gone)
        Close();
    return names;
}

} // namespace kestrova::platform
