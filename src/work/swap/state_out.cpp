#include "swap/state_out.h"

#include "archive/level_folders.h"
#include "core/activity_log.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "history/history.h"
#include "history/swap_journal_file.h"
#include "platform/file_content.h"
#include "session/telling.h"
#include "swap/live_state.h"
#include "words/restore.h"
#include "words/swap.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

/// Of a listing that came through.
Result<std::vector<StateFile>> HashesIn(const Result<std::vector<Path>>& files)
{
    return files ? HashesOf(*files) : Result<std::vector<StateFile>>{files.Error()};
}

} // namespace

StateOut::StateOut(const SwapParts& parts, ActivityLog& log, LevelCode to)
    : parts_(parts), log_(log), trle_(ResolvePath(parts.folders.trle))
{
    journal_.to = to;
}

bool StateOut::Begin()
{
    if (!IsFree(JournalPath(parts_.folders))
             .ValueOr(false)) { // another swap's is never written over
        parts_.host.Tell(Tone::Error, GetMsg(Msg::WorkPending));
        return false;
    }
    if (journal_.to >= 0)
        journal_.toStore = StateStoreOf(parts_.folders, journal_.to).native();
    const auto mark = [&](FolderMark& noted, const Path& folder) {
        auto found = folder.empty() ? Result<FolderMark>{FolderMark{}} : MarkOf(folder);
        if (!found)
            return TellFolderNotRead(parts_.host, found.Error());
        noted = std::move(*found);
        return true;
    };
    if (!mark(journal_.folder, parts_.folders.trle) ||
        !mark(journal_.fromRoot, RootOfStore(journal_.fromStore)) ||
        !mark(journal_.toRoot, RootOfStore(journal_.toStore)))
        return false;
    if (const auto status = WriteJournal(parts_.folders, journal_); !status) {
        TellFailure(parts_.host, GetMsg(Msg::CannotWriteJournal), status.Error());
        (void)DropJournal(
            parts_.folders); // it may stand though its flush failed; recovery reads it right
        return false;
    }
    begun_ = true;
    return true;
}

/// Nothing of the player could be kept: everything as it was before, in words.
bool StateOut::Abandon(const Failure& failure)
{
    TellFailure(parts_.host, GetMsg(Msg::CannotKeepState), failure);
    // What cannot be put back now stays noted in the journal, and the next start tries again.
    const LevelPlace from{journal_.from, Path{journal_.fromStore}.parent_path()};
    if (PutStoreBack(parts_.machine, parts_.folders, parts_.settings, from, journal_.fromStore,
                     journal_.store) &&
        DropJournal(parts_.folders))
        begun_ = false;
    return false;
}

/// The state has no store to go to: it stays live, and a copy of it is kept.
bool StateOut::KeepLiveState(const LevelPlace& level)
{
    const Path store = StateStoreOf(parts_.folders, level);
    journal_.from = level.code;
    journal_.fromStore = store.native();
    stateOf_ = owner_ && owner_->owner ? standing_.state : level;
    const auto stored = HashesIn(ListFiles(store, OnDisk::PatAll));
    const auto live = HashesIn(StateFilesIn(trle_));
    if (!stored || !live) {
        TellFailure(parts_.host, GetMsg(Msg::CannotKeepState),
                    stored ? live.Error() : stored.Error());
        return false;
    }
    journal_.store = *stored;
    journal_.live = *live;
    if (!Begin())
        return false;
    const auto status = KeepStateIn(parts_.machine, parts_.folders, parts_.settings, level, trle_);
    return status ? true : Abandon(status.Error());
}

/// State of another level that an earlier swap could not take out goes now, if it can: it is in
/// that level's own folder or in the history.
void StateOut::DropStrangers(const LevelPlace& from)
{
    for (const OwnedFile& stranger : strangers_) {
        const Path file = trle_ / stranger.name;
        std::string hash;
        std::string kept;
        const bool safe = !platform::HashOfFile(file, hash) &&
                          !platform::HashOfFile(HistoryContent(parts_.folders, hash), kept) &&
                          kept == hash;
        if (safe || KeepInHistory(parts_.machine, parts_.folders, parts_.settings, from, {file},
                                  Told(Msg::ReasonLeft)))
            (void)platform::Unlink(file); // what still cannot go stays noted
    }
    strangers_ = StrangersThere(parts_.folders, strangers_).ValueOr(strangers_);
}

StateOut::Outcome StateOut::MoveStateOut(LevelPlace from, bool marked)
{
    if (owner_ && owner_->owner) {
        const auto hasHome = IsFolder(HomeOf(parts_.folders, standing_.state));
        if (!hasHome) {
            TellFailure(parts_.host, GetMsg(Msg::CannotKeepState), hasHome.Error());
            return Outcome::Stopped;
        }
        if (*hasHome)
            from = standing_.state;
    }
    if (owner_ && !owner_->owner)
        stateOf_.reset();
    else
        stateOf_ = from;
    const Path store = ResolvePath(StateStoreOf(parts_.folders, from));
    journal_.from = from.code;
    journal_.fromStore = StateStoreOf(parts_.folders, from).native();
    DropStrangers(from);
    Status readable =
        SettleTwins(parts_.host, parts_.machine, parts_.settings, parts_.folders, from, trle_);
    if (readable)
        readable =
            SettleTwins(parts_.host, parts_.machine, parts_.settings, parts_.folders, from, store);
    const auto stored = ListFiles(store, OnDisk::PatAll);
    const auto live = HashesIn(LiveStateFiles(parts_.folders, strangers_));
    const auto before = HashesIn(stored);
    if (live)
        journal_.live = *live;
    if (before)
        journal_.store = *before;
    journal_.strangers = strangers_;
    if (!readable || !live || !before) {
        TellFailure(parts_.host, GetMsg(Msg::CannotKeepState),
                    !readable ? readable.Error()
                    : live    ? before.Error()
                              : live.Error());
        return Outcome::Stopped;
    }
    return Begin() ? MoveToStore(from, *stored, marked) : Outcome::Stopped;
}

StateOut::Outcome StateOut::MoveToStore(const LevelPlace& from, const std::vector<Path>& stored,
                                        bool marked)
{
    const Path store = ResolvePath(journal_.fromStore);
    const auto stop = [&](const Failure& failure) {
        Abandon(failure);
        return Outcome::Stopped;
    };
    std::vector<std::string> copies;
    if (auto status = MakeFolders(store); !status)
        return stop(status.Error());
    if (!stateOf_) { // emptied and filled already; only what a game wrote since comes to it
        if (auto status = StoreLiveState(parts_.machine, parts_.folders, parts_.settings, from,
                                         store, journal_.live, strangers_);
            !status)
            return stop(status.Error());
    } else {
        // What is live under the same name need not go: it would come again as it is. What could
        // not be brought in waits in the store, unless its name was taken since.
        std::vector<Path> going;
        for (std::size_t i = 0; i < stored.size(); ++i) {
            const StateFile& kept = journal_.store[i];
            const bool same =
                std::any_of(journal_.live.begin(), journal_.live.end(), [&](const StateFile& file) {
                    return file.hash == kept.hash && file.name == kept.name;
                });
            const bool waits =
                std::find(waiting_.begin(), waiting_.end(), kept.name) != waiting_.end() &&
                std::none_of(journal_.live.begin(), journal_.live.end(),
                             [&](const StateFile& f) { return EqualNames(f.name, kept.name); });
            if (!same && !waits)
                going.push_back(stored[i]);
        }
        if (auto status = KeepInHistory(parts_.machine, parts_.folders, parts_.settings, from,
                                        going, Told(Msg::ReasonSwap));
            !status)
            return stop(status.Error());
        if (auto status = EmptyStore(store, going, marked); !status) {
            if (!marked)
                return stop(status.Error());
            TellFailure(
                parts_.host,
                GetMsg(Msg::CannotDeleteBackupSavegames, {TextOf(HomeOf(parts_.folders, from))}),
                status.Error());
            if (status = PutStoreBack(parts_.machine, parts_.folders, parts_.settings, from, store,
                                      journal_.store);
                !status)
                return stop(status.Error());
            if (status = KeepStateIn(parts_.machine, parts_.folders, parts_.settings, from, trle_);
                !status)
                return stop(status.Error());
            return Outcome::Failed;
        }
        if (auto status = CopyStateOut(store, copies); !status)
            return stop(status.Error());
        if (journal_.fromStore == journal_.toStore)
            ComesAgain(store, going);
    }
    journal_.phase = SwapPhase::Stored;
    if (auto status = WriteJournal(parts_.folders, journal_); !status) {
        journal_.phase = SwapPhase::Planned;
        return stop(status.Error());
    }
    stateOf_.reset();
    waiting_.clear();
    DropLive(from, marked ? &copies : nullptr);
    return Outcome::Moved;
}

/// What has just gone into the store of the coming level comes in; what left the store does not.
void StateOut::ComesAgain(const Path& store, const std::vector<Path>& gone)
{
    std::set<std::string> coming;
    for (const Path& file : comingState_)
        coming.insert(file.filename().native());
    for (const Path& file : gone)
        coming.erase(file.filename().native());
    for (const StateFile& file : journal_.live)
        coming.insert(file.name);
    comingState_.clear();
    for (const std::string& name : coming)
        comingState_.push_back(store / name);
}

/// `copies`: the log's lines of the copying; null when nothing is logged.
void StateOut::DropLive(const LevelPlace& from, const std::vector<std::string>* copies)
{
    strangers_.clear();
    const auto dropped = DropLiveState(parts_.machine, parts_.folders, parts_.settings, from,
                                       journal_.live, strangers_);
    if (copies != nullptr)
        LogStateMove(*copies, dropped && strangers_.empty());
    if (strangers_.empty())
        return;
    std::vector<std::string> names;
    for (const OwnedFile& file : strangers_)
        names.push_back(Readable(file.name));
    parts_.host.Tell(Tone::Warning, GetMsg(Msg::StateLeft, {ShownNames(names)}),
                     dropped ? std::string{} : dropped.Error().reason);
}

/// Pattern by pattern, as a reader follows it, though all copies stand before the first deletion.
void StateOut::LogStateMove(const std::vector<std::string>& copies, bool dropped)
{
    const std::vector<std::string> patterns = StatePatterns();
    for (std::size_t i = 0; i < patterns.size(); ++i)
        log_ += (i < copies.size() ? copies[i] : std::string{}) +
                DeleteDirLine(trle_, patterns[i], dropped);
}

Status StateOut::EmptyStore(const Path& store, const std::vector<Path>& going, bool marked)
{
    Status emptied;
    for (const Path& file : going)
        if (const auto failure = platform::Unlink(file); failure && emptied)
            emptied = MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    if (marked)
        log_ += DeleteDirLine(store, std::string{OnDisk::PatAllFiles}, static_cast<bool>(emptied));
    return emptied;
}

/// All live state into the empty store, compared and flushed, each file as the journal has it.
/// `copies` gets the log's line of each pattern.
Status StateOut::CopyStateOut(const Path& store, std::vector<std::string>& copies)
{
    const CopyOptions safe{Verify::Content, true, false, {}};
    for (const std::string& pattern : StatePatterns()) {
        std::string& lines = copies.emplace_back();
        if (strangers_.empty())
            if (auto status = LogCopyMatching(trle_, store, lines, pattern, safe); !status)
                return status;
        for (const StateFile& file : journal_.live) // one by one beside what is another level's
            if (!strangers_.empty() && MatchesPattern(file.name, pattern))
                if (auto status = LogCopyFile(trle_ / file.name, store / file.name, lines, safe);
                    !status)
                    return status;
    }
    for (const StateFile& file : journal_.live) {
        std::string hash;
        if (platform::HashOfFile(store / file.name, hash) || hash != file.hash)
            return Failure{ErrorCode::Differs, file.name, {}};
    }
    return FlushFolder(store);
}

} // namespace kestrova
