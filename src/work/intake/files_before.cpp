#include "intake/files_before.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "history/changed_record.h"
#include "history/watched_files.h"
#include "intake/file_names.h"
#include "platform/files.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <sstream>

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestNote = 1 << 20;

Path KeptIn(const Path& levelFolder)
{
    return InFolder(levelFolder, OnDisk::FragBeforeEdit);
}

Path FilesIn(const Path& kept)
{
    return InFolder(kept, OnDisk::DirFiles);
}

Path RecordIn(const Path& kept)
{
    return InFolder(kept, OnDisk::FragKeptRecord);
}

Path TargetNote(const Path& kept, int number)
{
    return kept / (std::to_string(number) + std::string{OnDisk::EndingKeptTarget});
}

Path TargetBefore(const Path& kept, int number)
{
    return kept / (std::to_string(number) + std::string{OnDisk::EndingKeptFile});
}

Status Failed(const Path& file, const std::error_code& failure)
{
    return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
}

Status KeepOne(const Path& file, const Path& kept, const Heartbeat& heartbeat)
{
    CopyOptions options;
    options.verify = Verify::Content;
    if (heartbeat)
        options.progress = [&](std::uint64_t) { return heartbeat(); };
    return GiveSecondName(file, kept, options);
}

/// The kept file stands in its place and is kept still, so that this may be done again.
Status BringBack(const Path& kept, const Path& place)
{
    platform::FileFacts before;
    platform::FileFacts now;
    auto looked = platform::Look(kept, before);
    if (!looked)
        looked = platform::LookAtLink(place, now);
    if (looked)
        return Failed(place, looked);
    if (now.kind == platform::FileKind::File &&
        ((now.inode == before.inode && now.device == before.device) || SameContent(kept, place)))
        return {};
    StagedPlace staged{place};
    if (auto status = KeepOne(kept, staged.Staged(), {}); !status)
        return status;
    const auto failure = platform::Rename(staged.Staged(), place);
    return failure ? Failed(place, failure) : Status{};
}

/// All that is done, whatever fails; the first failure is the answer.
class FirstFailure
{
public:
    void Note(Status status)
    {
        if (first_)
            first_ = std::move(status);
    }
    [[nodiscard]] const Status& Answer() const { return first_; }

private:
    Status first_;
};

Status PutFilesBack(const Path& kept, const Path& files)
{
    const auto before = ListFiles(FilesIn(kept), OnDisk::PatAll);
    const auto now = ListFiles(files, OnDisk::PatAll);
    if (!before || !now)
        return before ? now.Error() : before.Error();
    std::set<std::string> names;
    FirstFailure first;
    for (const Path& file : *before) {
        names.insert(file.filename().native());
        first.Note(BringBack(file, files / file.filename()));
    }
    for (const Path& file : *now)
        if (!names.contains(file.filename().native()))
            if (const auto failure = platform::Unlink(file))
                first.Note(Failed(file, failure));
    if (!first.Answer())
        return first.Answer();
    return FlushFolder(files);
}

/// A file in another of the level's folders that was about to be written over.
struct Target {
    std::uint64_t size = 0; ///< of the source, as is its time
    std::int64_t modifiedNs = 0;
    bool hasSource = false;
    std::string place; ///< below the level's folder
};

std::string FormatTarget(const Target& target)
{
    std::ostringstream text;
    text << target.size << ' ' << target.modifiedNs << ' ' << target.hasSource << ' '
         << target.place;
    return text.str();
}

std::optional<Target> ParseTarget(const std::string& bytes)
{
    std::istringstream text{bytes};
    Target target;
    if (!(text >> target.size >> target.modifiedNs >> target.hasSource) || text.get() != ' ')
        return {};
    target.place.assign(std::istreambuf_iterator<char>{text}, {});
    return target;
}

bool StaysBelow(const Path& relative)
{
    return !relative.empty() && relative.is_relative() &&
           std::find(relative.begin(), relative.end(), Path{".."}) == relative.end();
}

/// Only what is as the edit left it goes.
Status PutTargetBack(const Path& kept, int number, const Path& levelFolder)
{
    const auto bytes = ReadWholeFile(TargetNote(kept, number), longestNote);
    if (!bytes)
        return bytes.Error();
    const auto target = ParseTarget(*bytes);
    if (!target || !StaysBelow(target->place))
        return MakeFailure(ErrorCode::Damaged, TextOf(TargetNote(kept, number)));
    const Path place = levelFolder / target->place;
    const Path before = TargetBefore(kept, number);
    const auto now = LookAtSpelled(place);
    const auto isKept = LookAtSpelled(before);
    if (!now || !isKept)
        return now ? isKept.Error() : now.Error();
    const bool missing = now->kind == platform::FileKind::Missing;
    const bool ours =
        !target->hasSource || (now->size == target->size && now->modifiedNs == target->modifiedNs);
    if (isKept->kind == platform::FileKind::File)
        return missing || ours ? BringBack(before, place) : Status{};
    if (now->kind != platform::FileKind::File || !ours)
        return {};
    const auto failure = platform::Unlink(place);
    return failure ? Failed(place, failure) : Status{};
}

Status PutTargetsBack(const Path& kept, const Path& levelFolder)
{
    int count = 0;
    for (;; ++count) {
        const auto isFree = IsFree(TargetNote(kept, count));
        if (!isFree)
            return isFree.Error();
        if (*isFree)
            break;
    }
    FirstFailure first;
    while (count-- > 0)
        first.Note(PutTargetBack(kept, count, levelFolder));
    return first.Answer();
}

/// Gone in one step; what is left of it then has a name that the next start clears.
Status Drop(const Path& kept)
{
    const Path leaving = StagedNameFor(kept);
    if (const auto failure = platform::Rename(kept, leaving))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(kept), failure);
    (void)RemoveTree(leaving);
    return {};
}

Status PutAllBack(const Path& kept, const Path& files)
{
    FirstFailure first;
    first.Note(PutFilesBack(kept, files));
    first.Note(PutTargetsBack(kept, files.parent_path()));
    return first.Answer();
}

} // namespace

namespace
{

/// Gathers what is different, the contents that went beside each other.
class Differences
{
public:
    explicit Differences(Path kept) : kept_(std::move(kept)) {}

    /// `was` and `now`: the file before the change and after it, as far as there was one.
    Status Compare(const Path& place, const std::optional<Path>& was,
                   const std::optional<Path>& now)
    {
        if (was && now && IsTheSame(*was, *now))
            return {};
        const auto before = was ? HashIfThere(*was) : std::string{};
        const auto after = now ? HashIfThere(*now) : std::string{};
        if (!before || !after)
            return before ? after.Error() : before.Error();
        if (*before == *after)
            return {};
        ChangedFolder& folder = FolderOf(place.parent_path());
        const std::string name = place.filename().native();
        if (!after->empty())
            folder.after.push_back({name, *after, place.native()});
        if (before->empty())
            return {};
        folder.before.push_back({name, *before});
        return KeepBeside(kept_, *was, *before);
    }
    std::vector<ChangedFolder> folders;

private:
    static bool IsTheSame(const Path& was, const Path& now)
    {
        const auto before = LookAtSpelled(was);
        const auto after = LookAtSpelled(now);
        return before && after && IsSameThing(*before, *after);
    }
    ChangedFolder& FolderOf(const Path& place)
    {
        for (ChangedFolder& folder : folders)
            if (Path{folder.folder} == place)
                return folder;
        folders.push_back({place.native(), false, {}, {}});
        return folders.back();
    }

    const Path kept_;
};

/// By exact name.
Result<std::map<std::string, Path>> FilesByName(const Path& folder)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    std::map<std::string, Path> names;
    for (const Path& file : *files)
        names.emplace(file.filename().native(), file);
    return names;
}

Status CompareFiles(Differences& differences, const Path& kept, const Path& files)
{
    const auto before = FilesByName(FilesIn(kept));
    const auto now = FilesByName(files);
    if (!before || !now)
        return before ? now.Error() : before.Error();
    std::set<std::string> names;
    for (const auto& [name, file] : *before)
        names.insert(name);
    for (const auto& [name, file] : *now)
        names.insert(name);
    const auto find = [](const std::map<std::string, Path>& in, const std::string& name) {
        const auto found = in.find(name);
        return found == in.end() ? std::nullopt : std::optional<Path>{found->second};
    };
    for (const std::string& name : names)
        if (auto status = differences.Compare(files / name, find(*before, name), find(*now, name));
            !status)
            return status;
    return {};
}

std::optional<Path> IfThere(const Path& file)
{
    return IsFree(file).ValueOr(true) ? std::nullopt : std::optional<Path>{file};
}

} // namespace

FilesBefore::FilesBefore(Path files, const LevelRecord& record)
    : files_(std::move(files)), record_(record)
{
}

FilesBefore::~FilesBefore()
{
    if (isKept_)
        (void)Drop(KeptIn(files_.parent_path())); // the next start tries again
}

Status FilesBefore::Keep(const Heartbeat& heartbeat)
{
    if (isKept_)
        return {};
    const Path kept = KeptIn(files_.parent_path());
    if (const auto killed = FinishKilledEdit(files_.parent_path(), record_); !killed)
        return killed.Error();
    const auto files = ListFiles(files_, OnDisk::PatAll);
    if (!files)
        return files.Error();
    const Path building = StagedNameFor(kept);
    Status status = MakeFolders(FilesIn(building));
    for (const Path& file : *files)
        if (status)
            status = KeepOne(file, FilesIn(building) / file.filename(), heartbeat);
    if (status)
        status = WriteWholeFile(RecordIn(building), BytesOfRecord(record_), false);
    if (status)
        if (const auto failure = platform::Rename(building, kept))
            status = Failed(kept, failure);
    isKept_ = static_cast<bool>(status);
    if (!isKept_)
        (void)RemoveTree(building); // its name is one that the next start clears
    return status;
}

Status FilesBefore::KeepTarget(const Path& target, const Path& source)
{
    if (auto status = Keep({}); !status)
        return status;
    const Path kept = KeptIn(files_.parent_path());
    const auto isThere = IsFile(target);
    const auto facts = LookAt(source);
    if (!isThere || !facts)
        return isThere ? facts.Error() : isThere.Error();
    if (*isThere)
        if (auto status = KeepOne(target, TargetBefore(kept, targets_), {}); !status)
            return status;
    const std::string note =
        FormatTarget({facts->size, facts->modifiedNs, !source.empty(),
                      target.lexically_relative(files_.parent_path()).native()});
    if (auto status = WriteWholeFile(TargetNote(kept, targets_), note, false); !status)
        return status;
    ++targets_;
    return {};
}

Result<std::vector<ChangedFolder>> FilesBefore::TakeChanges(const Path& kept) const
{
    if (!isKept_)
        return std::vector<ChangedFolder>{};
    const Path levelFolder = files_.parent_path();
    const Path here = KeptIn(levelFolder);
    Differences differences{kept};
    if (auto status = CompareFiles(differences, here, files_); !status)
        return status.Error();
    std::set<std::string> seen; // of several notes the first one tells what was before
    for (int number = 0; number < targets_; ++number) {
        const auto bytes = ReadWholeFile(TargetNote(here, number), longestNote);
        const auto target = bytes ? ParseTarget(*bytes) : std::nullopt;
        if (!target || !StaysBelow(target->place))
            return MakeFailure(ErrorCode::Damaged, TextOf(TargetNote(here, number)));
        if (!seen.insert(target->place).second)
            continue;
        const Path place = levelFolder / target->place;
        if (auto status =
                differences.Compare(place, IfThere(TargetBefore(here, number)), IfThere(place));
            !status)
            return status.Error();
    }
    return std::move(differences.folders);
}

Status FilesBefore::PutBack()
{
    if (!isKept_)
        return {};
    isKept_ = false;
    const Path kept = KeptIn(files_.parent_path());
    if (auto status = PutAllBack(kept, files_); !status)
        return status;
    return Drop(kept);
}

Result<bool> FinishKilledEdit(const Path& levelFolder, const LevelRecord& record)
{
    const Path kept = KeptIn(levelFolder);
    const auto isFree = IsFree(kept);
    if (!isFree)
        return isFree.Error();
    if (*isFree)
        return false;
    const auto before = ReadWholeFile(RecordIn(kept), longestNote);
    if (!before)
        return before.Error();
    const bool undone = *before == BytesOfRecord(record);
    const Path files = ResolvePath(InFolder(levelFolder, OnDisk::DirFiles));
    if (undone)
        if (auto status = PutAllBack(kept, files); !status)
            return status.Error();
    if (auto status = Drop(kept); !status)
        return status.Error();
    return undone;
}

} // namespace kestrova
