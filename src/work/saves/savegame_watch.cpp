#include "saves/savegame_watch.h"

#include "formats/trle_folder.h"
#include "history/history.h"
#include "history/standing.h"
#include "platform/clock.h"
#include "session/operation.h"
#include "swap/recovery.h"
#include "words/saves.h"

namespace kestrova
{

namespace
{

constexpr std::int64_t betweenLooks = platform::nsOfSecond;
constexpr std::int64_t stillFor = 2 * platform::nsOfSecond;
constexpr std::int64_t afterTheEnd = 5 * platform::nsOfSecond;
/// A full disk is no reason to try again every second.
constexpr std::int64_t afterAFailure = 60 * platform::nsOfSecond;

} // namespace

void SavegameWatch::Tick(const ArchiveParts& parts, bool gameRuns, int ownOperations)
{
    const std::int64_t now = parts.machine.NowNs();
    if (gameRuns)
        untilNs_ = now + afterTheEnd;
    NoteClosed(parts.folders, gameRuns);
    if (parts.running.operations > ownOperations)
        return;
    if (now > untilNs_)
        return Rest();
    // A clock that was set back must not stop it.
    const bool looks = now < lastLookNs_ || now - lastLookNs_ >= betweenLooks;
    if ((!looks && closed_.empty()) || !InterruptedWork(parts.folders, parts.archive).empty())
        return;
    const auto standing = LookAtStanding(parts.folders, parts.archive);
    if (!standing)
        return; // the next look may know
    const LevelPlace& level = standing->state;
    KeepClosed(parts, level, now);
    if (!looks)
        return;
    lastLookNs_ = now;
    Look(parts, level, now);
}

void SavegameWatch::Rest()
{
    seen_.clear();
    closed_.clear();
    watch_.Close();
}

void SavegameWatch::NoteClosed(const Folders& folders, bool gameRuns)
{
    if (gameRuns) {
        Path folder = ResolvePath(folders.trle);
        if (!watch_.IsOpen() || watched_ != folder) {
            watched_ = std::move(folder);
            (void)watch_.Open(watched_); // without it the looks find what lies still
        }
    }
    for (std::string& name : watch_.TakeNames())
        if (MatchesPattern(name, OnDisk::SavegamePattern))
            closed_.insert(std::move(name));
}

void SavegameWatch::KeepClosed(const ArchiveParts& parts, const LevelPlace& level, std::int64_t now)
{
    std::vector<Path> files;
    for (const std::string& name : std::exchange(closed_, {}))
        if (Path file = watched_ / name; FileExists(file))
            files.push_back(std::move(file));
    for (const Path& file : files) {
        const platform::FileFacts facts = platform::FactsOf(file);
        seen_[file] = {facts.size, facts.modifiedNs, now, false};
    }
    Keep(parts, level, files, now);
}

void SavegameWatch::Look(const ArchiveParts& parts, const LevelPlace& level, std::int64_t now)
{
    if (const Path home = HomeOf(parts.folders, level); home != home_) {
        seen_.clear();
        home_ = home;
    }
    const auto files = ListFiles(parts.folders.trle, OnDisk::SavegamePattern);
    if (!files)
        return; // the next look comes soon
    std::vector<Path> still;
    for (const Path& file : *files) {
        const platform::FileFacts facts = platform::FactsOf(file);
        Seen& seen = seen_[file];
        if (seen.sinceNs == 0 || seen.size != facts.size || seen.modifiedNs != facts.modifiedNs ||
            now < seen.sinceNs - afterAFailure)
            seen = {facts.size, facts.modifiedNs, now, false};
        else if (!seen.kept && now - seen.sinceNs >= stillFor)
            still.push_back(file);
    }
    Keep(parts, level, still, now);
}

void SavegameWatch::Keep(const ArchiveParts& parts, const LevelPlace& level,
                         const std::vector<Path>& files, std::int64_t now)
{
    if (files.empty())
        return;
    const Operation operation{parts};
    const auto kept = KeepInHistory(parts.machine, parts.folders, parts.settings, level, files,
                                    Told(Msg::ReasonPlayed));
    for (const Path& file : files) {
        // What was written meanwhile is seen as changed by the next look.
        seen_[file].kept = static_cast<bool>(kept);
        if (!kept)
            seen_[file].sinceNs = now + afterAFailure;
    }
}

} // namespace kestrova
