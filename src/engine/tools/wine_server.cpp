#include "tools/wine_server.h"

#include "core/text.h"
#include "platform/record_lock.h"
#include "platform/user_folders.h"
#include "tools/file_names.h"
#include "words/tools.h"

#include <array>
#include <charconv>
#include <thread>

namespace kestrova
{

namespace
{

constexpr std::chrono::milliseconds lookAtServer{30};

std::string InHex(std::uint64_t number)
{
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
    return {digits.begin(), end};
}

/// Wine calls the folder of a server after the user, and after device and inode of the prefix.
Path LockOfServer(const Path& prefix)
{
    const platform::FileFacts facts = platform::FactsOf(prefix);
    return Path{std::string{OnDisk::WineServersFolder} + std::to_string(platform::UserNumber())} /
           (std::string{OnDisk::WineServerFolder} + InHex(facts.device) + '-' +
            InHex(facts.inode)) /
           OnDisk::WineServerLock;
}

} // namespace

bool WineServerRuns(const Path& prefix)
{
    return !prefix.empty() && platform::IsLockedByOther(LockOfServer(prefix));
}

Status AwaitWineServer(const Path& prefix, const std::string& program, ProgressScope& progress,
                       std::chrono::milliseconds longest)
{
    if (!WineServerRuns(prefix))
        return {};
    progress.SetLabel(GetMsg(Msg::WineAwaited, {program}));
    const auto end = std::chrono::steady_clock::now() + longest;
    while (WineServerRuns(prefix)) {
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(prefix));
        if (std::chrono::steady_clock::now() >= end)
            return InWords(ErrorCode::Refused, GetMsg(Msg::WineBusy, {TextOf(prefix)}));
        std::this_thread::sleep_for(lookAtServer);
    }
    return {};
}

} // namespace kestrova
