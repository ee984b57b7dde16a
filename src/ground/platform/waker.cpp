#include "platform/waker.h"

#include <array>
#include <cstring>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace kestrova::platform
{

Waker Waker::OnEndOf(std::int64_t pid)
{
    // A new descriptor of this kind is never inherited by a program that is started.
    return Waker{
        pid <= 0 ? -1 : static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(pid), 0))};
}

Waker Waker::OnOpenIn(const std::filesystem::path& folder)
{
    Waker waker{::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
    if (waker.Works() &&
        ::inotify_add_watch(waker.descriptor_, folder.c_str(), IN_OPEN | IN_ONLYDIR) < 0)
        waker.Close();
    return waker;
}

Waker& Waker::operator=(Waker&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

std::vector<std::string> Waker::Opened() const
{
    std::vector<std::string> names;
    constexpr std::size_t room = 16384;
    alignas(inotify_event) std::array<char, room> bytes;
    for (ssize_t got = 0; (got = ::read(descriptor_, bytes.data(), bytes.size())) > 0;)
        for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
            inotify_event event;
            std::memcpy(&event, bytes.data() + at, sizeof event);
            // The folder itself has no name here, and the name is padded with zeros.
            if (event.len > 0 && (event.mask & IN_ISDIR) == 0)
                names.emplace_back(bytes.data() + at + sizeof event);
            at += sizeof event + event.len;
        }
    return names;
}

void Waker::Close()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
    descriptor_ = -1;
}

} // namespace kestrova::platform
