#include "swap/homeless_state.h"

#include "archive/level_folders.h"
#include "core/look.h"
#include "core/name_list.h"
#include "history/history.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "session/telling.h"
#include "swap/folder_guard.h"
#include "swap/live_state.h"
#include "swap/return_to_original.h"
#include "swap/whereabouts.h"
#include "words/originals.h"
#include "words/restore.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// The level's folder where the person said that it is; no value, told, when it is not that one.
std::optional<LevelPlace> FollowSaidHome(Host& host, const Folders& folders,
                                         const LevelPlace& level, const OwnerRecord& owner,
                                         const Path& archiveFolder)
{
    const Path noted = HomeOf(folders, level);
    const Path said = archiveFolder / noted.filename();
    const auto isNoted = HasMark(said, owner.home);
    if (!isNoted) {
        TellFailure(host, GetMsg(Msg::InterruptedFailed), isNoted.Error());
        return {};
    }
    if (!*isNoted && !Confirmed(host, said, noted))
        return {};
    return LevelPlace{level.code, said};
}

/// The state goes to its level's store, which is there, or to the history.
Status SendHome(const SwapParts& parts, const Folders& folders, const Homeless& state,
                const OwnerRecord& owner, bool letGo)
{
    const LevelPlace& level = state.level;
    SwapJournal journal;
    journal.phase = SwapPhase::Stored;
    journal.from = level.code;
    journal.fromStore = StateStoreOf(folders, level).native();
    journal.to = -1;
    journal.strangers = state.strangers;
    journal.remove = owner.added;
    journal.restore = owner.overwritten;
    journal.storeLetGo = letGo;
    auto folder = MarkOf(folders.trle);
    auto root = letGo ? Result<FolderMark>{FolderMark{}} : MarkOf(RootOfStore(journal.fromStore));
    if (!folder || !root)
        return folder ? root.Error() : folder.Error();
    journal.folder = std::move(*folder);
    journal.fromRoot = std::move(*root);
    // First the copies alone: while they cannot be made nothing waits that would hold up a swap.
    auto status =
        SettleTwins(parts.host, parts.machine, parts.settings, folders, level, folders.trle);
    if (status && !letGo)
        status = SettleTwins(parts.host, parts.machine, parts.settings, folders, level,
                             ResolvePath(journal.fromStore));
    if (status && !letGo)
        status = StoreLiveState(parts.machine, folders, parts.settings, level, journal.fromStore,
                                journal.live, state.strangers);
    if (status && letGo)
        status = KeepInHistory(parts.machine, folders, parts.settings, level, state.live,
                               Told(Msg::ReasonInterrupted));
    if (status)
        status = WriteJournal(folders, journal);
    LeftInTrle left;
    if (status)
        status = ReturnToOriginal(parts, folders, std::move(journal), left);
    if (status)
        TellLeftovers(parts.host, folders, left);
    return status;
}

} // namespace

std::vector<std::string> ShownNamesOf(const std::vector<Path>& files)
{
    std::vector<std::string> names;
    for (const Path& file : files)
        names.push_back(Readable(file.filename().native()));
    return names;
}

Result<std::optional<Homeless>> FindHomeless(const Folders& folders, const Standing& standing)
{
    if (!standing.owner || !standing.owner->owner || !IsOriginals(folders, standing.level) ||
        IsOriginals(folders, standing.state))
        return std::optional<Homeless>{};
    auto strangers = StrangersThere(folders, standing.owner->strangers);
    if (!strangers)
        return strangers.Error();
    auto live = LiveStateFiles(folders, *strangers);
    if (!live)
        return live.Error();
    return std::optional{Homeless{standing.state, std::move(*strangers), std::move(*live)}};
}

HomelessLeft ReturnHomelessState(const SwapParts& parts, const Folders& folders,
                                 const Whereabouts& said)
{
    const auto standing = LookAtStanding(folders, parts.archive);
    if (!standing)
        return {{}, standing.Error()};
    const auto found = FindHomeless(folders, *standing);
    if (!found)
        return {{}, found.Error()};
    if (!*found)
        return {};
    Homeless state = **found;
    const OwnerRecord& owner = *standing->owner;
    auto hasHome = IsFolder(HomeOf(folders, state.level));
    if (hasHome && !*hasHome && !said.archiveFolder.empty()) {
        const auto followed =
            FollowSaidHome(parts.host, folders, state.level, owner, said.archiveFolder);
        if (!followed)
            return {};
        state.level = *followed;
        hasHome = true;
    }
    if (!hasHome)
        return {{}, hasHome.Error()};
    if (!*hasHome && !said.letGo)
        return {};
    auto names = ShownNamesOf(state.live);
    if (!ProgramsInTrle(parts, folders).empty())
        return {std::move(names), std::nullopt};
    if (const auto status = SendHome(parts, folders, state, owner, !*hasHome); !status)
        return {std::move(names), status.Error()};
    const Message words = *hasHome ? Msg::StateReturned : Msg::StateLetGo;
    if (!names.empty())
        parts.host.Tell(Tone::Warning,
                        GetMsg(words, {TextOf(HomeOf(folders, state.level)), ShownNames(names)}));
    return {};
}

bool FollowMovedState(const SwapParts& parts, const Whereabouts& said)
{
    const Path noted = parts.folders.trle;
    const auto isThere = IsFolder(noted);
    if (said.trle.empty() || !isThere || *isThere)
        return true;
    const auto owner = ReadOwnerAsNoted(parts.folders);
    if (!owner || !*owner || (*owner)->folder.path != noted.native())
        return true;
    const auto isNoted = HasMark(said.trle, (*owner)->folder);
    if (!isNoted || !*isNoted) {
        parts.host.Tell(Tone::Error,
                        GetMsg(Msg::NotThatFolder, {TextOf(said.trle), TextOf(noted)}));
        return false;
    }
    if (const auto held = parts.locks.Hold(said.trle); !held) {
        TellFailure(parts.host, GetMsg(Msg::FolderNotLocked, {TextOf(said.trle)}), held.Error());
        return false;
    }
    parts.preferences.trlePath = said.trle.native();
    return true;
}

} // namespace kestrova
