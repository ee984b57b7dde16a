#include "swap/state_files.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "swap/history.h"
#include "swap/marker.h"

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

/// Where a content of a store lies while the store is empty: in the history, unless the same bytes
/// are live.
Path ContentOf(const Session& session, const std::string& hash)
{
    Path kept = HistoryContent(session, hash);
    if (FileExists(kept))
        return kept;
    for (Path& file : StateFilesIn(session.TrleFolder()))
        if (HashOrEmpty(file) == hash)
            return std::move(file);
    return kept;
}

} // namespace

std::vector<std::string> StatePatterns()
{
    return Split(RowText(Msg::StatePatterns), '|');
}

std::vector<Path> StateFilesIn(const Path& folder)
{
    std::vector<Path> files;
    for (const std::string& pattern : StatePatterns())
        for (Path& file : ListFiles(folder, pattern))
            files.push_back(std::move(file));
    return files;
}

bool IsPlayersFile(std::string_view name)
{
    return MatchesPattern(name, RowText(Msg::SavegamePattern)) ||
           MatchesPattern(name, RowText(Msg::NotePattern)) ||
           MatchesPattern(name, RowText(Msg::ShotPattern));
}

Result<std::vector<StateFile>> HashesOf(const std::vector<Path>& files)
{
    std::vector<StateFile> result;
    for (const Path& file : files) {
        StateFile entry{file.filename().native(), {}};
        if (const auto failure = platform::HashOfFile(file, entry.hash))
            return MakeFailure(ErrorCode::CannotRead, TextOf(file), failure);
        result.push_back(std::move(entry));
    }
    return result;
}

Path LiveStateFolder(const Session& session, LevelCode code)
{
    return code == CurrentLevelCode(session) ? session.TrleFolder() : StateStoreOf(session, code);
}

Status SettleTwins(Session& session, LevelCode code, const Path& folder)
{
    const Path place = ResolvePath(folder);
    if (auto status = CanList(place); !status)
        return status;
    std::map<std::string, Path> newest;
    std::vector<Path> others;
    for (const Path& file : ListFiles(place, RowText(Msg::PatAll))) {
        if (!IsPlayersFile(file.filename().native()))
            continue;
        const auto [known, first] = newest.emplace(FoldCase(file.filename().native()), file);
        if (first)
            continue;
        const bool newer =
            platform::FactsOf(file).modifiedNs > platform::FactsOf(known->second).modifiedNs;
        others.push_back(newer ? known->second : file);
        if (newer)
            known->second = file;
    }
    if (auto status = KeepInHistory(session, code, others, GetMsg(Msg::ReasonTwin)); !status)
        return status;
    for (const Path& file : others)
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    return {};
}

Status StoreLiveState(Session& session, LevelCode owner, const Path& store,
                      std::vector<StateFile>& live)
{
    if (auto status = CanList(session.TrleFolder()); !status)
        return status;
    const std::vector<Path> files = StateFilesIn(session.TrleFolder());
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
        if (!FileExists(kept)) {
            coming.push_back(file);
        } else if (!SameContent(file, kept)) {
            const bool liveIsNewer =
                platform::FactsOf(file).modifiedNs > platform::FactsOf(kept).modifiedNs;
            older.push_back(liveIsNewer ? kept : file);
            if (liveIsNewer)
                coming.push_back(file);
        }
    }
    if (auto status = KeepInHistory(session, owner, older, GetMsg(Msg::ReasonInterrupted)); !status)
        return status;
    for (const Path& file : coming)
        if (auto status = CopyFileOver(file, place / file.filename(), keptCopy); !status)
            return status;
    return FlushFolder(place);
}

Status DropLiveState(Session& session, LevelCode owner, const std::vector<StateFile>& live)
{
    const Path trle = ResolvePath(session.TrleFolder());
    for (const StateFile& entry : live) {
        const Path file = trle / entry.name;
        if (HashOrEmpty(file) != entry.hash)
            continue;
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    }
    return KeepInHistory(session, owner, StateFilesIn(trle), GetMsg(Msg::ReasonSwap));
}

Status PutStoreBack(Session& session, LevelCode code, const Path& folder,
                    const std::vector<StateFile>& wanted)
{
    const Path store = ResolvePath(folder);
    if (!FolderExists(store))
        return {};
    if (auto status = CanList(store); !status)
        return status;
    std::vector<Path> strange;
    for (const Path& file : ListFiles(store, RowText(Msg::PatAll))) {
        const std::string hash = HashOrEmpty(file);
        const bool belongs = std::any_of(wanted.begin(), wanted.end(), [&](const StateFile& entry) {
            return entry.name == file.filename().native() && entry.hash == hash;
        });
        if (!belongs)
            strange.push_back(file);
    }
    if (auto status = KeepInHistory(session, code, strange, GetMsg(Msg::ReasonInterrupted));
        !status)
        return status;
    for (const Path& file : strange)
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    for (const StateFile& entry : wanted) {
        const Path file = store / entry.name;
        if (platform::FactsOf(file).kind == platform::FileKind::File)
            continue;
        const Path content = ContentOf(session, entry.hash);
        if (!FileExists(content))
            continue; // gone by another hand; waiting would not bring it back
        if (auto status = CopyFileOver(content, file, keptCopy); !status)
            return status;
    }
    return FlushFolder(store);
}

void BringStateIn(Session& session, LevelCode code, LevelCode before, ActivityLog* log,
                  std::vector<std::string>& replaced, std::vector<std::string>& failed)
{
    const Path store = StateStoreOf(session, code);
    const Path trle = ResolvePath(session.TrleFolder());
    const std::vector<Path> files = ListFiles(store, RowText(Msg::PatAllFiles));
    std::vector<Path> players;
    std::vector<std::string> spared;
    for (const Path& file : files) {
        const Path target = ResolvePath(trle / file.filename());
        if (!FileExists(target) || SameContent(file, target))
            continue;
        if (IsPlayersFile(file.filename().native()))
            players.push_back(target);
        else if (KeepOriginal(session, file.filename()))
            replaced.push_back(GetMsg(Msg::FragRoot) + file.filename().native());
        else
            spared.push_back(file.filename().native());
    }
    if (!KeepInHistory(session, before, players, GetMsg(Msg::ReasonComesIn)))
        for (const Path& file : players)
            spared.push_back(file.filename().native());
    const auto isSpared = [&](const Path& file) {
        return std::any_of(spared.begin(), spared.end(), [&](const std::string& name) {
            return EqualNames(name, file.filename().native());
        });
    };
    if (spared.empty()) { // the ordinary way, one line of the log
        ActivityLog unread;
        (void)LogCopyMatching(store, trle, log != nullptr ? *log : unread,
                              RowText(Msg::PatAllFiles), keptCopy);
    }
    for (const Path& file : files) {
        if (!spared.empty() && !isSpared(file))
            (void)CopyFileOver(file, trle / file.filename(), keptCopy);
        if (isSpared(file) || !SameContent(file, trle / file.filename()))
            failed.push_back(TextOf(file.filename()));
    }
    if (!files.empty())
        (void)FlushFolder(trle); // the store still has what a power cut would take
}

Status KeepOriginal(Session& session, const Path& relative)
{
    const Path file = ResolvePath(session.TrleFolder() / relative);
    const platform::FileFacts facts = platform::FactsOf(file);
    if (facts.kind != platform::FileKind::File)
        return {};
    const Path pristine = ResolvePath(session.BackupFolder() / relative);
    const platform::FileFacts backed = platform::FactsOf(pristine);
    const bool untouched = backed.kind == platform::FileKind::File && backed.size == facts.size &&
                           (backed.modifiedNs == facts.modifiedNs || SameContent(file, pristine));
    if (untouched)
        return {};
    const Path folder =
        InFolder(session.programFolder, RowText(Msg::DirHistoryOriginals)) / relative.parent_path();
    if (auto status = MakeFolders(folder); !status)
        return status;
    Path kept = folder / relative.filename();
    for (int number = 2; FileExists(kept) && !SameContent(kept, file); ++number)
        kept = folder / (relative.filename().native() + "." + std::to_string(number));
    return FileExists(kept) ? Status{}
                            : CopyFileOver(file, kept, {Verify::Content, true, true, {}});
}

} // namespace kestrova
