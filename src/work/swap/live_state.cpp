#include "swap/live_state.h"

#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "history/history.h"
#include "history/standing.h"
#include "history/swap_journal_file.h"
#include "originals/vault.h"
#include "platform/file_content.h"
#include "swap/file_names.h"
#include "swap/owned_files.h"
#include "words/restore.h"
#include "words/swap.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

const CopyOptions keptCopy{Verify::Content, true, false, {}};

std::string HashOrEmpty(const Path& file)
{
    std::string hash;
    return platform::HashOfFile(file, hash) ? std::string{} : hash;
}

Result<bool> IsNewer(const Path& file, const Path& other)
{
    const auto first = LookAt(file);
    if (!first)
        return first.Error();
    const auto second = LookAt(other);
    if (!second)
        return second.Error();
    return first->modifiedNs > second->modifiedNs;
}

/// Where a content of a store lies while the store is empty: in the history, unless the same bytes
/// are live.
Result<Path> ContentOf(const Folders& folders, const std::string& hash)
{
    Path kept = HistoryContent(folders, hash);
    const auto isKept = IsFile(kept);
    if (!isKept)
        return isKept.Error();
    if (*isKept)
        return kept;
    const auto live = StateFilesIn(folders.trle);
    if (!live)
        return live.Error();
    for (const Path& file : *live)
        if (HashOrEmpty(file) == hash)
            return file;
    return kept;
}

} // namespace

Status SettleTwins(Host& host, Machine& machine, const ProgramSettings& settings,
                   const Folders& folders, const LevelPlace& level, const Path& folder)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    std::map<std::string, Path> newest;
    std::vector<Path> others;
    for (const Path& file : *files) {
        if (!IsPlayersFile(file.filename().native()))
            continue;
        const auto [known, first] = newest.emplace(FoldCase(file.filename().native()), file);
        if (first)
            continue;
        const auto newer = IsNewer(file, known->second);
        if (!newer)
            return newer.Error();
        others.push_back(*newer ? known->second : file);
        if (*newer)
            known->second = file;
    }
    if (auto status =
            KeepInHistory(machine, folders, settings, level, others, Told(Msg::ReasonTwin));
        !status)
        return status;
    std::vector<std::string> names;
    for (const Path& file : others) {
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
        names.push_back(Readable(file.filename().native()));
    }
    if (!names.empty())
        host.Tell(Tone::Warning,
                  GetMsg(Msg::TwinsToHistory, {ShownNames(names), std::to_string(level.code)}));
    return {};
}

Result<std::vector<OwnedFile>> StrangersThere(const Folders& folders,
                                              const std::vector<OwnedFile>& noted)
{
    std::vector<OwnedFile> there;
    for (const OwnedFile& file : noted) {
        const auto name = SafeName(file.name);
        if (!name || !IsPlayersFile(file.name))
            continue;
        const auto facts = LookAt(folders.trle / *name);
        if (!facts)
            return facts.Error();
        const bool byName =
            file.modifiedNs == 0 && file.size == 0 && facts->kind == platform::FileKind::File;
        if (byName || IsAsPut(file, *facts))
            there.push_back(file);
    }
    return there;
}

Result<std::vector<Path>> LiveStateFiles(const Folders& folders,
                                         const std::vector<OwnedFile>& strangers)
{
    auto files = StateFilesIn(folders.trle);
    if (!files)
        return files;
    std::erase_if(*files, [&](const Path& file) {
        return std::any_of(strangers.begin(), strangers.end(), [&](const OwnedFile& stranger) {
            return stranger.name == file.filename().native();
        });
    });
    return files;
}

Status StoreLiveState(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                      const LevelPlace& owner, const Path& store, std::vector<StateFile>& live,
                      const std::vector<OwnedFile>& strangers)
{
    const auto listed = LiveStateFiles(folders, strangers);
    if (!listed)
        return listed.Error();
    const std::vector<Path>& files = *listed;
    auto hashes = HashesOf(files);
    if (!hashes)
        return hashes.Error();
    live = std::move(*hashes);
    if (files.empty())
        return {};
    const Path place = ResolvePath(store);
    if (auto status = MakeFolder(place); !status)
        return status;
    std::vector<Path> older;
    std::vector<Path> coming;
    for (const Path& file : files) {
        const Path kept = ResolvePath(place / file.filename());
        const auto isStored = IsFile(kept);
        if (!isStored)
            return isStored.Error();
        if (!*isStored) {
            coming.push_back(file);
        } else if (!SameContent(file, kept)) {
            const auto liveIsNewer = IsNewer(file, kept);
            if (!liveIsNewer)
                return liveIsNewer.Error();
            older.push_back(*liveIsNewer ? kept : file);
            if (*liveIsNewer)
                coming.push_back(file);
        }
    }
    if (auto status =
            KeepInHistory(machine, folders, settings, owner, older, Told(Msg::ReasonInterrupted));
        !status)
        return status;
    for (const Path& file : coming)
        if (auto status = CopyFileOver(file, place / file.filename(), keptCopy); !status)
            return status;
    return FlushFolder(place);
}

Status KeepStateIn(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                   const LevelPlace& level, const Path& folder)
{
    const auto files = StateFilesIn(folder);
    return files ? KeepInHistory(machine, folders, settings, level, *files, Told(Msg::ReasonSwap))
                 : Status{files.Error()};
}

Status DropLiveState(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                     const LevelPlace& owner, const std::vector<StateFile>& live,
                     std::vector<OwnedFile>& left)
{
    const Path trle = ResolvePath(folders.trle);
    for (const StateFile& entry : live)
        if (const Path file = trle / entry.name; HashOrEmpty(file) == entry.hash)
            (void)platform::Unlink(file); // one that stays is found below
    const auto stays = StateFilesIn(trle);
    if (!stays) { // what was stored and is still there is known by name
        for (const StateFile& entry : live)
            if (!IsFree(trle / entry.name).ValueOr(false))
                left.push_back(AsItStands(entry.name, trle / entry.name));
        return stays.Error();
    }
    Status kept;
    for (const Path& file : *stays) {
        left.push_back(AsItStands(file.filename().native(), file));
        // What cannot be read now is stored already, or was written since and stays where it is.
        if (const std::string hash = HashOrEmpty(file); !hash.empty() && kept)
            kept = KeepInHistory(machine, folders, settings, owner, {file}, Told(Msg::ReasonSwap));
    }
    return kept;
}

Status PutStoreBack(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                    const LevelPlace& level, const Path& folder,
                    const std::vector<StateFile>& wanted)
{
    const Path store = ResolvePath(folder);
    const auto isThere = IsFolder(store);
    if (!isThere)
        return isThere.Error();
    if (!*isThere)
        return {};
    const auto stored = ListFiles(store, OnDisk::PatAll);
    if (!stored)
        return stored.Error();
    std::vector<Path> strange;
    for (const Path& file : *stored) {
        const std::string hash = HashOrEmpty(file);
        const bool belongs = std::any_of(wanted.begin(), wanted.end(), [&](const StateFile& entry) {
            return entry.name == file.filename().native() && entry.hash == hash;
        });
        if (!belongs)
            strange.push_back(file);
    }
    if (auto status =
            KeepInHistory(machine, folders, settings, level, strange, Told(Msg::ReasonInterrupted));
        !status)
        return status;
    for (const Path& file : strange)
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    for (const StateFile& entry : wanted) {
        const Path file = store / entry.name;
        const auto isStored = IsFile(file);
        if (!isStored)
            return isStored.Error();
        if (*isStored)
            continue;
        const auto content = ContentOf(folders, entry.hash);
        if (!content)
            return content.Error();
        const auto isKept = IsFile(*content);
        if (!isKept)
            return isKept.Error();
        if (!*isKept)
            continue; // gone by another hand; waiting would not bring it back
        if (auto status = CopyFileOver(*content, file, keptCopy); !status)
            return status;
    }
    return FlushFolder(store);
}

Result<std::vector<Path>> StoredState(const Folders& folders, const LevelPlace& level)
{
    return ListFiles(StateStoreOf(folders, level), OnDisk::PatAllFiles);
}

BroughtState BringStateIn(Machine& machine, const Folders& folders, const ProgramSettings& settings,
                          const Path& store, const std::vector<Path>& stored,
                          const LevelPlace& before, ActivityLog* log)
{
    BroughtState brought;
    const Path trle = ResolvePath(folders.trle);
    std::vector<Path> players;
    std::vector<std::string> spared;
    for (const Path& file : stored) {
        const Path target = ResolvePath(trle / file.filename());
        const auto isTaken = IsFile(target);
        if (isTaken && (!*isTaken || SameContent(file, target)))
            continue;
        if (!isTaken) // nobody knows what would be replaced
            spared.push_back(file.filename().native());
        else if (IsPlayersFile(file.filename().native()))
            players.push_back(target);
        else if (KeepOriginal(machine, folders, file.filename()))
            brought.replaced.push_back(std::string{OnDisk::FragRoot} + file.filename().native());
        else
            spared.push_back(file.filename().native());
    }
    if (!KeepInHistory(machine, folders, settings, before, players, Told(Msg::ReasonComesIn)))
        for (const Path& file : players)
            spared.push_back(file.filename().native());
    const auto isSpared = [&](const Path& file) {
        return std::any_of(spared.begin(), spared.end(), [&](const std::string& name) {
            return EqualNames(name, file.filename().native());
        });
    };
    if (spared.empty()) { // the ordinary way, one line of the log
        ActivityLog unread;
        (void)LogCopyMatching(store, trle, log != nullptr ? *log : unread, OnDisk::PatAllFiles,
                              keptCopy);
    }
    for (const Path& file : stored) {
        if (!spared.empty() && !isSpared(file))
            (void)CopyFileOver(file, trle / file.filename(), keptCopy);
        if (isSpared(file) || !SameContent(file, trle / file.filename()))
            brought.waiting.push_back(file.filename().native());
    }
    if (!stored.empty())
        (void)FlushFolder(trle); // the store still has what a power cut would take
    return brought;
}

void BringWaiting(Machine& machine, const Folders& folders, const Archive& archive)
{
    auto standing = LookAtStanding(folders, archive);
    if (!standing || !standing->owner || standing->owner->waiting.empty())
        return;
    OwnerRecord& owner = *standing->owner;
    const Path trle = ResolvePath(folders.trle);
    const Path store = StateStoreOf(folders, standing->state);
    const auto came = std::erase_if(owner.waiting, [&](const std::string& name) {
        return IsFree(trle / name).ValueOr(false) &&
               CopyFileOver(store / name, trle / name, keptCopy);
    });
    if (came > 0 && FlushFolder(trle))
        (void)WriteOwner(machine, folders,
                         std::move(owner)); // otherwise they are looked for once more
}

} // namespace kestrova
