#include "swap/state_files.h"

#include "archive/level_folders.h"
#include "catalogue/message.h"
#include "swap/history.h"
#include "swap/marker.h"

#include <algorithm>

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

Status ReturnLiveState(Session& session, LevelCode owner)
{
    const Path store = ResolvePath(StateStoreOf(session, owner));
    const std::vector<Path> live = StateFilesIn(session.TrleFolder());
    if (live.empty())
        return {};
    if (auto status = MakeFolders(store); !status)
        return status;
    for (const Path& file : live) {
        const Path kept = ResolvePath(store / file.filename());
        if (!FileExists(kept)) {
            if (auto status = CopyFileOver(file, kept, keptCopy); !status)
                return status;
        } else if (!SameContent(file, kept)) {
            const bool liveIsNewer =
                platform::FactsOf(file).modifiedNs > platform::FactsOf(kept).modifiedNs;
            if (auto status = KeepInHistory(session, owner, {liveIsNewer ? kept : file},
                                            GetMsg(Msg::ReasonInterrupted));
                !status)
                return status;
            if (liveIsNewer)
                if (auto status = CopyFileOver(file, kept, keptCopy); !status)
                    return status;
        }
    }
    if (auto status = FlushFolder(store); !status)
        return status;
    for (const Path& file : live)
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    return {};
}

Status PutStoreBack(Session& session, LevelCode code, const std::vector<StateFile>& wanted)
{
    const Path store = ResolvePath(StateStoreOf(session, code));
    if (!FolderExists(store))
        return {};
    for (const Path& file : ListFiles(store, RowText(Msg::PatAll))) {
        const std::string hash = HashOrEmpty(file);
        const bool belongs = std::any_of(wanted.begin(), wanted.end(), [&](const StateFile& entry) {
            return entry.name == file.filename().native() && entry.hash == hash;
        });
        if (belongs)
            continue;
        if (auto status = KeepInHistory(session, code, {file}, GetMsg(Msg::ReasonInterrupted));
            !status)
            return status;
        if (const auto failure = platform::Unlink(file))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(file), failure);
    }
    for (const StateFile& entry : wanted) {
        const Path file = store / entry.name;
        if (platform::FactsOf(file).kind == platform::FileKind::File)
            continue;
        if (auto status = CopyFileOver(ContentOf(session, entry.hash), file, keptCopy); !status)
            return status;
    }
    return FlushFolder(store);
}

void BringStateIn(Session& session, LevelCode code, LevelCode before, ActivityLog* log,
                  std::vector<std::string>& failed)
{
    const Path store = StateStoreOf(session, code);
    const Path trle = session.TrleFolder();
    const CopyOptions compared{Verify::Content, false, false, {}};
    bool allKept = true;
    for (const Path& file : ListFiles(store, RowText(Msg::PatAllFiles))) {
        const Path target = ResolvePath(trle / file.filename());
        if (!FileExists(target) || SameContent(file, target))
            continue;
        const Status kept =
            IsPlayersFile(file.filename().native())
                ? KeepInHistory(session, before, {target}, GetMsg(Msg::ReasonComesIn))
                : KeepOriginal(session, file.filename());
        if (!kept) {
            failed.push_back(TextOf(file.filename()));
            allKept = false;
        }
    }
    if (allKept) { // the ordinary way, one line of the log
        ActivityLog unread;
        (void)LogCopyMatching(store, trle, log != nullptr ? *log : unread,
                              RowText(Msg::PatAllFiles), compared);
    }
    for (const Path& file : ListFiles(store, RowText(Msg::PatAllFiles))) {
        const bool spared =
            std::find(failed.begin(), failed.end(), TextOf(file.filename())) != failed.end();
        if (!allKept && !spared)
            (void)CopyFileOver(file, trle / file.filename(), compared);
        if (!spared && !SameContent(file, trle / file.filename()))
            failed.push_back(TextOf(file.filename()));
    }
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
