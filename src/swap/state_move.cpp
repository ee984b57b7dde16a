#include "swap/swap_run.h"

#include "archive/level_folders.h"
#include "swap/history.h"
#include "swap/log_lines.h"
#include "swap/state_files.h"
#include "swap/swap_notes.h"

#include <algorithm>

namespace kestrova
{

bool SwapRun::Begin()
{
    if (FileExists(JournalPath(session_))) { // another swap's note is never written over
        session_.host.Tell(Tone::Error, GetMsg(Msg::WorkPending));
        return false;
    }
    journal_.fromStore = StateStoreOf(session_, journal_.from).native();
    if (journal_.to >= 0)
        journal_.toStore = StateStoreOf(session_, journal_.to).native();
    if (const auto status = WriteJournal(session_, journal_); !status) {
        TellFailure(session_, GetMsg(Msg::CannotWriteJournal), status.Error());
        (void)DropJournal(
            session_); // it may stand though its flush failed; recovery reads it right
        return false;
    }
    begun_ = true;
    return true;
}

/// Nothing of the player could be kept: everything as it was before, in words.
bool SwapRun::Abandon(const Failure& failure)
{
    TellFailure(session_, GetMsg(Msg::CannotKeepState), failure);
    // What cannot be put back now stays noted in the journal, and the next start tries again.
    if (PutStoreBack(session_, journal_.from, journal_.fromStore, journal_.store) &&
        DropJournal(session_))
        begun_ = false;
    return false;
}

/// The state has no store to go to: it stays live, and a copy of it is kept.
bool SwapRun::KeepLiveState(LevelCode code)
{
    journal_.from = code;
    stateOf_ = owner_ ? owner_->owner : std::optional<LevelCode>{code};
    const auto stored = HashesOf(ListFiles(StateStoreOf(session_, code), RowText(Msg::PatAll)));
    const auto live = HashesOf(StateFilesIn(trle_));
    if (!stored || !live) {
        TellFailure(session_, GetMsg(Msg::CannotKeepState), stored ? live.Error() : stored.Error());
        return false;
    }
    journal_.store = *stored;
    journal_.live = *live;
    if (!Begin())
        return false;
    const auto status = KeepInHistory(session_, code, StateFilesIn(trle_), GetMsg(Msg::ReasonSwap));
    return status ? true : Abandon(status.Error());
}

SwapRun::StateMove SwapRun::MoveStateOut(LevelCode storeOf, bool marked)
{
    const bool nobodys = owner_ && !owner_->owner;
    if (owner_ && owner_->owner && FolderExists(LevelHomeOf(session_, *owner_->owner)))
        storeOf = *owner_->owner;
    stateOf_ = nobodys ? std::optional<LevelCode>{} : std::optional<LevelCode>{storeOf};
    const Path home = LevelHomeOf(session_, storeOf);
    const Path store = ResolvePath(StateStoreOf(session_, storeOf));
    Status readable = CanList(trle_);
    if (readable)
        readable = CanList(store);
    if (readable)
        readable = SettleTwins(session_, storeOf, trle_);
    if (readable)
        readable = SettleTwins(session_, storeOf, store);
    const std::vector<Path> stored = ListFiles(store, RowText(Msg::PatAll));
    const auto live = HashesOf(StateFilesIn(trle_));
    const auto before = HashesOf(stored);
    journal_.from = storeOf;
    if (live)
        journal_.live = *live;
    if (before)
        journal_.store = *before;
    if (!readable || !live || !before) {
        TellFailure(session_, GetMsg(Msg::CannotKeepState),
                    !readable ? readable.Error()
                    : live    ? before.Error()
                              : live.Error());
        return StateMove::Stopped;
    }
    if (!Begin())
        return StateMove::Stopped;
    const auto stop = [&](const Failure& failure) {
        Abandon(failure);
        return StateMove::Stopped;
    };

    std::vector<std::string> copies;
    if (auto status = MakeFolders(store); !status)
        return stop(status.Error());
    if (nobodys) { // emptied and filled already; only what a game wrote since comes to it
        if (auto status = StoreLiveState(session_, storeOf, store, journal_.live); !status)
            return stop(status.Error());
    } else {
        // What is live under the same name need not go: it would come again as it is.
        std::vector<Path> going;
        for (std::size_t i = 0; i < stored.size(); ++i)
            if (std::none_of(live->begin(), live->end(), [&](const StateFile& file) {
                    return file.hash == (*before)[i].hash && file.name == (*before)[i].name;
                }))
                going.push_back(stored[i]);
        if (auto status = KeepInHistory(session_, storeOf, going, GetMsg(Msg::ReasonSwap)); !status)
            return stop(status.Error());
        if (auto status = EmptyStore(store, going, marked); !status) {
            if (!marked)
                return stop(status.Error());
            TellFailure(session_, GetMsg(Msg::CannotDeleteBackupSavegames, {TextOf(home)}),
                        status.Error());
            if (status = PutStoreBack(session_, storeOf, store, journal_.store); !status)
                return stop(status.Error());
            if (status =
                    KeepInHistory(session_, storeOf, StateFilesIn(trle_), GetMsg(Msg::ReasonSwap));
                !status)
                return stop(status.Error());
            return StateMove::Failed;
        }
        if (auto status = CopyStateOut(store, copies); !status)
            return stop(status.Error());
    }
    journal_.phase = SwapPhase::Stored;
    if (auto status = WriteJournal(session_, journal_); !status) {
        journal_.phase = SwapPhase::Planned;
        return stop(status.Error());
    }
    stateOf_.reset();
    const auto dropped = DropLiveState(session_, storeOf, journal_.live);
    if (marked)
        LogStateMove(copies, static_cast<bool>(dropped));
    return StateMove::Moved;
}

/// Pattern by pattern, as a reader follows it, though all copies stand before the first deletion.
void SwapRun::LogStateMove(const std::vector<std::string>& copies, bool dropped)
{
    const std::vector<std::string> patterns = StatePatterns();
    for (std::size_t i = 0; i < patterns.size(); ++i)
        log_ += (i < copies.size() ? copies[i] : std::string{}) +
                DeleteDirLine(trle_, patterns[i], dropped);
}

Status SwapRun::EmptyStore(const Path& store, const std::vector<Path>& going, bool marked)
{
    Status emptied;
    for (const Path& file : going)
        if (const auto failure = platform::Unlink(file); failure && emptied)
            emptied = MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    if (marked)
        log_ += DeleteDirLine(store, GetMsg(Msg::PatAllFiles), static_cast<bool>(emptied));
    return emptied;
}

/// All live state into the empty store, compared and flushed, each file as the journal has it.
/// `copies` gets the log's line of each pattern.
Status SwapRun::CopyStateOut(const Path& store, std::vector<std::string>& copies)
{
    const CopyOptions safe{Verify::Content, true, false, {}};
    for (const std::string& pattern : StatePatterns()) {
        auto status = LogCopyMatching(trle_, store, copies.emplace_back(), pattern, safe);
        if (!status)
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
