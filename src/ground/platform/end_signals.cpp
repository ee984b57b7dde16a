#include "platform/end_signals.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace kestrova::platform
{

namespace
{

volatile std::sig_atomic_t heard = 0;
int ends[2] = {-1, -1};

/// Only what a signal handler may call.
extern "C" void OnEndSignal(int signal)
{
    const int kept = errno;
    heard = signal;
    (void)!::write(ends[1], "", 1);
    errno = kept;
}

} // namespace

int NoteEndSignals()
{
    if (ends[0] < 0 && ::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return -1;
    struct sigaction action = {};
    action.sa_handler = OnEndSignal;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction before = {};
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(signal, &action, nullptr);
    }
    return ends[0];
}

void EndBySignal()
{
    const int signal = heard != 0 ? heard : SIGTERM;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace kestrova::platform
