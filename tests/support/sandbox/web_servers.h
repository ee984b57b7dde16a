#pragma once

#include "core/names.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// Servers on the loopback: one that says what no sound server says, and a real one.
namespace kestrova::testing
{

/// One client's connection, as a script sees it.
class Connection
{
public:
    explicit Connection(int socket) : socket_(socket) {}
    std::string request; ///< the head of what the client asks
    /// False once the client has left.
    bool Send(std::string_view bytes) const;
    /// Says nothing until the client leaves or the server ends.
    void Wait() const;
    /// The value of a line of the request's head; empty without one.
    [[nodiscard]] std::string Header(std::string_view name) const;

private:
    int socket_;
};

/// Answers each connection as `talk` says, in a thread of its own; the connection ends with it.
class ScriptedServer
{
public:
    using Talk = std::function<void(const Connection&)>;
    explicit ScriptedServer(Talk talk);
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    /// `path` with its leading slash.
    [[nodiscard]] std::string Address(const std::string& path) const;
    /// The heads of all requests so far.
    [[nodiscard]] std::vector<std::string> Requests() const;

private:
    void Accept();
    void Serve(int socket);

    Talk talk_;
    int port_ = 0;
    int listener_; ///< it gives the port
    mutable std::mutex mutex_;
    bool ending_ = false;
    std::vector<int> sockets_;
    std::vector<std::string> requests_;
    std::vector<std::thread> talks_;
    std::thread accepting_;
};

/// lighttpd over a folder.
class RealServer
{
public:
    /// With a certificate for `certifiedName` it speaks https, and its certificate stands in
    /// `Certificate()`.
    explicit RealServer(const Path& folder, const std::string& certifiedName = {});
    ~RealServer();
    RealServer(const RealServer&) = delete;
    RealServer& operator=(const RealServer&) = delete;

    [[nodiscard]] std::string Address(const std::string& path) const;
    [[nodiscard]] const Path& Certificate() const { return certificate_; }

private:
    Path work_;
    Path certificate_;
    int port_ = 0;
    std::int64_t pid_ = 0;
};

} // namespace kestrova::testing
