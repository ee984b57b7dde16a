#include "platform/local_socket.h"

#include "platform/files.h"
#include "platform/last_error.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace kestrova::platform
{

namespace
{

constexpr int waitingCallers = 64;

int NewSocket()
{
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

/// The address of a name. The system bounds it to 108 bytes, so it goes by the open folder.
class SocketAddress
{
public:
    explicit SocketAddress(const Path& place)
        : folder_(::open(place.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
        const std::string name =
            "/proc/self/fd/" + std::to_string(folder_) + '/' + place.filename().native();
        if (folder_ < 0)
            failure_ = LastError();
        else if (name.size() >= sizeof address_.sun_path)
            failure_ = std::make_error_code(std::errc::filename_too_long);
        else
            name.copy(address_.sun_path, name.size());
        address_.sun_family = AF_UNIX;
    }
    ~SocketAddress()
    {
        if (folder_ >= 0)
            ::close(folder_);
    }
    SocketAddress(const SocketAddress&) = delete;
    SocketAddress& operator=(const SocketAddress&) = delete;

    [[nodiscard]] std::error_code Failure() const { return failure_; }
    [[nodiscard]] const sockaddr* Value() const
    {
        return reinterpret_cast<const sockaddr*>(&address_);
    }

private:
    int folder_;
    sockaddr_un address_{};
    std::error_code failure_;
};

bool IsOfThisUser(int descriptor)
{
    ucred other{};
    socklen_t size = sizeof other;
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &other, &size) == 0 &&
           other.uid == ::geteuid();
}

bool WaitFor(int descriptor, short events, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd wait{descriptor, events, 0};
        const int ready =
            ::poll(&wait, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

} // namespace

LocalSocket::LocalSocket(LocalSocket&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1))
{
}

LocalSocket& LocalSocket::operator=(LocalSocket&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

LocalSocket::~LocalSocket()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::error_code LocalSocket::Listen(const Path& place, LocalSocket& socket)
{
    struct stat there {
    };
    if (::lstat(place.c_str(), &there) == 0 && S_ISSOCK(there.st_mode))
        if (const auto failure = Unlink(place))
            return failure;
    const SocketAddress address{place};
    if (address.Failure())
        return address.Failure();
    LocalSocket made{NewSocket()};
    // The name takes over what the socket says of itself; nobody else may call, not for a moment.
    if (!made.IsOpen() || ::fchmod(made.descriptor_, 0600) != 0 ||
        ::bind(made.descriptor_, address.Value(), sizeof(sockaddr_un)) != 0 ||
        ::listen(made.descriptor_, waitingCallers) != 0)
        return LastError();
    socket = std::move(made);
    return {};
}

std::error_code LocalSocket::Connect(const Path& place, LocalSocket& socket)
{
    const SocketAddress address{place};
    if (address.Failure())
        return address.Failure();
    LocalSocket made{NewSocket()};
    if (!made.IsOpen() || ::connect(made.descriptor_, address.Value(), sizeof(sockaddr_un)) != 0)
        return LastError();
    if (!IsOfThisUser(made.descriptor_))
        return std::make_error_code(std::errc::permission_denied);
    socket = std::move(made);
    return {};
}

std::error_code LocalSocket::Accept(LocalSocket& caller)
{
    for (;;) {
        LocalSocket came{::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
        if (!came.IsOpen())
            return LastError();
        if (!IsOfThisUser(came.descriptor_))
            continue; // it is closed unheard
        caller = std::move(came);
        return {};
    }
}

std::error_code LocalSocket::Send(std::string_view bytes, std::chrono::milliseconds patience)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
            continue;
        }
        const std::error_code failure = LastError();
        if (failure == std::errc::interrupted)
            continue;
        if (failure != std::errc::resource_unavailable_try_again)
            return failure;
        if (!WaitFor(descriptor_, POLLOUT, patience))
            return std::make_error_code(std::errc::timed_out);
    }
    return {};
}

std::error_code LocalSocket::Receive(std::string& bytes, std::size_t most, bool& ended)
{
    std::array<char, 16384> buffer{};
    ended = false;
    while (bytes.size() < most) {
        const std::size_t room = std::min(buffer.size(), most - bytes.size());
        const ssize_t got = ::recv(descriptor_, buffer.data(), room, 0);
        if (got < 0) {
            const std::error_code failure = LastError();
            if (failure == std::errc::interrupted)
                continue;
            return failure == std::errc::resource_unavailable_try_again ? std::error_code{}
                                                                        : failure;
        }
        ended = got == 0;
        if (ended)
            return {};
        bytes.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return {};
}

bool LocalSocket::WaitForBytes(std::chrono::milliseconds patience) const
{
    return WaitFor(descriptor_, POLLIN, patience);
}

SocketGroup::SocketGroup() : descriptor_(::epoll_create1(EPOLL_CLOEXEC)) {}

SocketGroup::~SocketGroup()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::error_code SocketGroup::Add(const LocalSocket& socket)
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = socket.Descriptor();
    if (::epoll_ctl(descriptor_, EPOLL_CTL_ADD, socket.Descriptor(), &event) != 0)
        return LastError();
    return {};
}

} // namespace kestrova::platform
