#include "platform/terminal.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>

namespace kestrova::platform
{

namespace
{

volatile std::sig_atomic_t interrupted = 0;
std::string_view interruptWords;

/// Only what a signal handler may call.
extern "C" void OnInterrupt(int signal)
{
    const int kept = errno;
    // The end of a terminal is often told twice; only a person who presses again means more.
    if (interrupted != 0 && signal != SIGINT)
        return;
    if (interrupted != 0) {
        ::signal(signal, SIG_DFL);
        ::raise(signal);
    }
    interrupted = 1;
    (void)!::write(STDERR_FILENO, interruptWords.data(), interruptWords.size());
    errno = kept;
}

} // namespace

bool IsTerminal(Stream stream)
{
    return ::isatty(static_cast<int>(stream)) == 1;
}

std::error_code WriteStream(Stream stream, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(static_cast<int>(stream), text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return {errno, std::generic_category()};
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

bool ReadLine(std::string& line)
{
    line.clear();
    for (char c = 0;;) {
        const ssize_t got = ::read(STDIN_FILENO, &c, 1);
        if (got < 0 && errno == EINTR && interrupted == 0)
            continue;
        if (got < 0 || (got == 0 && line.empty()))
            return false;
        if (got == 0 || c == '\n')
            return true;
        line += c;
    }
}

void IgnoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}

void NoteInterrupts(std::string_view words)
{
    interruptWords = words;
    struct sigaction action = {};
    action.sa_handler = OnInterrupt; // no SA_RESTART: a question must come back
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
    struct sigaction before = {};
    // Whoever started the program may have wanted it to outlive the terminal.
    if (::sigaction(SIGHUP, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
        ::sigaction(SIGHUP, &action, nullptr);
}

bool WasInterrupted()
{
    return interrupted != 0;
}

} // namespace kestrova::platform
