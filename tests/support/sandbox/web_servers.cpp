#include "sandbox/web_servers.h"

#include "core/files.h"
#include "core/staged_file.h"

#include <arpa/inet.h>
#include <cstdlib>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace
{

/// A listening socket on a port that the system chooses.
int Listen(int& port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    if (::bind(socket, reinterpret_cast<sockaddr*>(&place), size) != 0 ||
        ::listen(socket, 64) != 0 ||
        ::getsockname(socket, reinterpret_cast<sockaddr*>(&place), &size) != 0)
        std::abort();
    port = ntohs(place.sin_port);
    return socket;
}

/// Runs a program to its end; its output is dropped.
bool Runs(const std::string& command)
{
    return std::system(("(" + command + ") >/dev/null 2>&1").c_str()) == 0;
}

} // namespace

bool Connection::Send(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

void Connection::Wait() const
{
    char byte = 0;
    while (::recv(socket_, &byte, 1, 0) > 0)
        ;
}

std::string Connection::Header(std::string_view name) const
{
    const std::size_t place = request.find("\r\n" + std::string{name} + ": ");
    if (place == std::string::npos)
        return {};
    const std::size_t from = place + name.size() + 4;
    return request.substr(from, request.find("\r\n", from) - from);
}

ScriptedServer::ScriptedServer(Talk talk) : talk_(std::move(talk)), listener_(Listen(port_))
{
    accepting_ = std::thread{[this] { Accept(); }};
}

ScriptedServer::~ScriptedServer()
{
    {
        const std::scoped_lock lock{mutex_};
        ending_ = true;
        for (const int socket : sockets_)
            ::shutdown(socket, SHUT_RDWR);
    }
    ::shutdown(listener_, SHUT_RDWR);
    accepting_.join();
    for (std::thread& talk : talks_)
        talk.join();
    for (const int socket : sockets_)
        ::close(socket);
    ::close(listener_);
}

void ScriptedServer::Accept()
{
    for (;;) {
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const std::scoped_lock lock{mutex_};
        if (socket < 0 || ending_) {
            if (socket >= 0)
                ::close(socket);
            return;
        }
        sockets_.push_back(socket);
        talks_.emplace_back([this, socket] { Serve(socket); });
    }
}

void ScriptedServer::Serve(int socket)
{
    Connection connection{socket};
    char byte = 0;
    while (!connection.request.ends_with("\r\n\r\n") && ::recv(socket, &byte, 1, 0) == 1)
        connection.request += byte;
    if (connection.request.ends_with("\r\n\r\n")) {
        {
            const std::scoped_lock lock{mutex_};
            requests_.push_back(connection.request);
        }
        talk_(connection);
    }
    ::shutdown(socket, SHUT_RDWR);
}

std::string ScriptedServer::Address(const std::string& path) const
{
    return fmt::format("http://127.0.0.1:{}{}", port_, path);
}

std::vector<std::string> ScriptedServer::Requests() const
{
    const std::scoped_lock lock{mutex_};
    return requests_;
}

RealServer::RealServer(const Path& folder, const std::string& certifiedName)
{
    std::string name = "/tmp/kestrova-server-XXXXXX";
    work_ = ::mkdtemp(name.data());
    int listener = Listen(port_);
    std::string words = fmt::format("server.document-root = \"{}\"\n"
                                    "server.bind = \"127.0.0.1\"\nserver.port = {}\n"
                                    "server.systemd-socket-activation = \"enable\"\n"
                                    "server.errorlog = \"{}/log\"\n"
                                    "mimetype.assign = (\"\" => \"application/octet-stream\")\n",
                                    folder.native(), port_, work_.native());
    if (!certifiedName.empty()) {
        certificate_ = work_ / "certificate";
        const Path both = work_ / "both";
        EXPECT_TRUE(Runs(fmt::format(
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 -subj "
            "/CN={0} -addext subjectAltName={1}:{0} -keyout {2}/key -out {2}/certificate && "
            "cat {2}/key {2}/certificate > {2}/both",
            certifiedName, certifiedName.front() == '1' ? "IP" : "DNS", work_.native())));
        words += fmt::format("server.modules += (\"mod_openssl\")\n"
                             "ssl.engine = \"enable\"\nssl.pemfile = \"{}\"\n",
                             both.native());
    }
    EXPECT_TRUE(WriteWholeFile(work_ / "words", words, false));
    pid_ = ::fork();
    if (pid_ == 0) {
        constexpr int firstHandedOver = 3;
        if (listener == firstHandedOver)
            listener = ::dup(listener);
        ::dup2(listener, firstHandedOver);
        ::setenv("LISTEN_FDS", "1", 1);
        ::setenv("LISTEN_PID", std::to_string(::getpid()).c_str(), 1);
        const std::string file = work_ / "words";
        ::execl("/usr/sbin/lighttpd", "lighttpd", "-D", "-f", file.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(listener); // a client waits in its queue until the server is there
}

RealServer::~RealServer()
{
    ::kill(static_cast<pid_t>(pid_), SIGTERM);
    int status = 0;
    ::waitpid(static_cast<pid_t>(pid_), &status, 0);
    EXPECT_TRUE(Runs("rm -r '" + work_.native() + "'"));
}

std::string RealServer::Address(const std::string& path) const
{
    return fmt::format("{}://127.0.0.1:{}{}", certificate_.empty() ? "http" : "https", port_, path);
}

} // namespace kestrova::testing
