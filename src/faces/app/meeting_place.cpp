#include "app/meeting_place.h"

#include "app/file_names.h"
#include "platform/file_content.h"
#include "platform/real_path.h"
#include "platform/user_folders.h"
#include "session/holder_words.h"

#include <thread>

namespace kestrova
{

namespace
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds betweenTries{20};
constexpr std::size_t mostCallers = 64;
constexpr std::size_t longestCall = longestOpenRequest + 64;

milliseconds LeftUntil(steady_clock::time_point end)
{
    return std::max(milliseconds{0},
                    std::chrono::duration_cast<milliseconds>(end - steady_clock::now()));
}

/// What becomes of a request at the one who listens; no value when that program is just ending.
std::optional<MeetingPlace::Role> HandTo(platform::LocalSocket& first, const std::string& request,
                                         steady_clock::time_point end)
{
    if (const auto failure = first.Send(request, LeftUntil(end)))
        return failure == std::errc::timed_out ? std::optional{MeetingPlace::Role::NoAnswer}
                                               : std::nullopt;
    std::string answer;
    for (bool ended = false; answer.size() < openTaken.size();) {
        if (!first.WaitForBytes(LeftUntil(end)))
            return MeetingPlace::Role::NoAnswer;
        if (first.Receive(answer, openTaken.size(), ended) || ended)
            return std::nullopt;
    }
    if (answer != openTaken || first.Send(openGo, LeftUntil(end)))
        return std::nullopt;
    return MeetingPlace::Role::Taken;
}

} // namespace

MeetingPlace::MeetingPlace(const Path& programFolder)
{
    Path real;
    if (platform::RealPath(programFolder, real))
        return;
    const Path runtime = platform::RuntimeFolder();
    const Path own = runtime / OnDisk::DirMeeting;
    if (!runtime.empty() && MakeFolders(own)) {
        const std::string name = platform::HashOf(std::as_bytes(std::span(real.native())));
        socket_ = own / name;
    } else {
        socket_ = real / OnDisk::MeetingSocket;
    }
    lockFile_ = socket_;
    lockFile_ += OnDisk::MeetingLockEnding;
}

MeetingPlace::~MeetingPlace()
{
    if (listener_.IsOpen()) // before the lock is given up, so that it is this program's own
        (void)platform::Unlink(socket_);
}

MeetingPlace::Role MeetingPlace::Begin(const OpenRequest& request, milliseconds patience)
{
    return socket_.empty() ? Role::First : Ask(FormatOpenRequest(request), patience);
}

MeetingPlace::Role MeetingPlace::Ask(const std::string& request, milliseconds patience)
{
    const auto end = steady_clock::now() + patience;
    for (;;) {
        platform::LocalSocket first;
        const auto failure = platform::LocalSocket::Connect(socket_, first);
        if (!failure) {
            if (request.empty())
                return Role::TooMuch;
            if (const auto answer = HandTo(first, request, end); answer == Role::Taken)
                return Role::Taken;
        } else if (failure == std::errc::permission_denied) {
            return Role::First; // another user's; the folder's lock has the last word
        }
        const auto held = platform::FileLock::Take(lockFile_, WordsOfHolder(), lock_, holder_);
        if (held != std::errc::resource_unavailable_try_again) {
            // Without a meeting place later starts find the folder's lock, as ever.
            if (!held && !platform::LocalSocket::Listen(socket_, listener_))
                (void)group_.Add(listener_);
            return Role::First;
        }
        if (steady_clock::now() >= end)
            return Role::NoAnswer;
        std::this_thread::sleep_for(betweenTries);
    }
}

int MeetingPlace::Descriptor() const
{
    return listener_.IsOpen() ? group_.Descriptor() : -1;
}

std::vector<OpenRequest> MeetingPlace::Hear()
{
    for (platform::LocalSocket came; !listener_.Accept(came); came = {}) {
        if (callers_.size() == mostCallers)
            callers_.erase(callers_.begin()); // who asks waits no longer than `patience`
        if (!group_.Add(came))
            callers_.push_back({std::move(came)});
    }
    std::vector<OpenRequest> asked;
    std::erase_if(callers_, [&](Caller& caller) { return HearOne(caller, asked); });
    return asked;
}

/// True when there is nothing more to hear of the caller.
bool MeetingPlace::HearOne(Caller& caller, std::vector<OpenRequest>& asked)
{
    bool ended = false;
    if (caller.socket.Receive(caller.bytes, longestCall, ended))
        return true;
    OpenRequest request;
    std::size_t used = 0;
    const Arrived arrived = ParseOpenRequest(caller.bytes, request, used);
    if (arrived != Arrived::Whole)
        return arrived == Arrived::Wrong || ended || caller.bytes.size() >= longestCall;
    const std::string_view rest = std::string_view{caller.bytes}.substr(used);
    if (caller.answered && rest == openGo) {
        asked.push_back(std::move(request));
        return true;
    }
    if (ended || !(caller.answered ? openGo.starts_with(rest) : rest.empty()))
        return true;
    if (caller.answered)
        return false;
    caller.answered = true;
    return static_cast<bool>(caller.socket.Send(openTaken, milliseconds{0}));
}

} // namespace kestrova
