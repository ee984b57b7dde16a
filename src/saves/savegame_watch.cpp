#include "saves/savegame_watch.h"

#include "catalogue/message.h"
#include "swap/history.h"
#include "swap/marker.h"
#include "swap/recovery.h"

namespace kestrova
{

namespace
{

constexpr std::int64_t secondNs = 1'000'000'000;
constexpr std::int64_t betweenLooks = secondNs;
constexpr std::int64_t stillFor = 2 * secondNs;
constexpr std::int64_t afterTheEnd = 5 * secondNs;
/// A full disk is no reason to try again every second.
constexpr std::int64_t afterAFailure = 60 * secondNs;

} // namespace

void SavegameWatch::Tick(Session& session, bool gameRuns)
{
    const std::int64_t now = session.machine.NowNs();
    if (gameRuns)
        untilNs_ = now + afterTheEnd;
    if (session.runningOperations > 0)
        return;
    if (now > untilNs_) {
        seen_.clear();
        return;
    }
    // A clock that was set back must not stop it.
    if (now >= lastLookNs_ && now - lastLookNs_ < betweenLooks)
        return;
    lastLookNs_ = now;
    if (InterruptedWork(session).empty())
        Look(session, now);
}

void SavegameWatch::Look(Session& session, std::int64_t now)
{
    const LevelPlace level = StateOwner(session);
    if (const Path home = HomeOf(session, level); home != home_) {
        seen_.clear();
        home_ = home;
    }
    std::vector<Path> still;
    for (const Path& file : ListFiles(session.TrleFolder(), RowText(Msg::SavegamePattern))) {
        const platform::FileFacts facts = platform::FactsOf(file);
        Seen& seen = seen_[file];
        if (seen.sinceNs == 0 || seen.size != facts.size || seen.modifiedNs != facts.modifiedNs ||
            now < seen.sinceNs - afterAFailure)
            seen = {facts.size, facts.modifiedNs, now, false};
        else if (!seen.kept && now - seen.sinceNs >= stillFor)
            still.push_back(file);
    }
    if (still.empty())
        return;
    const Operation operation{session};
    const auto kept = KeepInHistory(session, level, still, GetMsg(Msg::ReasonPlayed));
    for (const Path& file : still) {
        // What was written meanwhile is seen as changed by the next look.
        seen_[file].kept = static_cast<bool>(kept);
        if (!kept)
            seen_[file].sinceNs = now + afterAFailure;
    }
}

} // namespace kestrova
