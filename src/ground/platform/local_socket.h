#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// Sockets of this machine that stand under a name in a folder, by which programs of one person
/// talk to each other.
namespace kestrova::platform
{

/// One end; closed at the end of its life, never inherited by a child. Whoever is on the other side
/// belongs to the same user, or there is no connection.
class LocalSocket
{
public:
    LocalSocket() = default;
    LocalSocket(LocalSocket&& other) noexcept;
    LocalSocket& operator=(LocalSocket&& other) noexcept;
    ~LocalSocket();

    /// Waits for callers under that name from now on, for this user alone. A socket that stands
    /// there is replaced; anything else is left alone, and is a failure. The name may be long.
    static std::error_code Listen(const std::filesystem::path& place, LocalSocket& socket);
    /// `connection_refused` where a socket stands that nobody listens at, `permission_denied` for
    /// one of another user, `resource_unavailable_try_again` while too many wait there already.
    static std::error_code Connect(const std::filesystem::path& place, LocalSocket& socket);
    /// The next caller of a listening socket; `resource_unavailable_try_again` when none waits.
    std::error_code Accept(LocalSocket& caller);

    /// All of `bytes`, or `timed_out` when the other side took none for that long.
    std::error_code Send(std::string_view bytes, std::chrono::milliseconds patience);
    /// Puts what has come behind `bytes`, which grows to `most` at the utmost, and waits for
    /// nothing. `ended`: nothing more will come.
    std::error_code Receive(std::string& bytes, std::size_t most, bool& ended);
    /// False when nothing came for that long.
    [[nodiscard]] bool WaitForBytes(std::chrono::milliseconds patience) const;

    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int Descriptor() const { return descriptor_; }

private:
    explicit LocalSocket(int descriptor) : descriptor_(descriptor) {}
    int descriptor_ = -1;
};

/// Several sockets as one descriptor, which can be read while one of them has something to tell.
/// One that is closed leaves by itself.
class SocketGroup
{
public:
    SocketGroup();
    ~SocketGroup();
    SocketGroup(const SocketGroup&) = delete;
    SocketGroup& operator=(const SocketGroup&) = delete;

    std::error_code Add(const LocalSocket& socket);
    /// -1 where the system gives none.
    [[nodiscard]] int Descriptor() const { return descriptor_; }

private:
    int descriptor_ = -1;
};

} // namespace kestrova::platform
