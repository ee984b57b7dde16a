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
#include "intake/kept_edit.h"
#include "platform/files.h"

#include <map>
#include <optional>
#include <set>

namespace kestrova
{

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
    const auto before = FilesByName(KeptFiles(kept));
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
        (void)DropKeptEdit(KeptEditOf(files_.parent_path())); // the next start tries again
}

Status FilesBefore::Keep(const Heartbeat& heartbeat)
{
    if (isKept_)
        return {};
    const Path kept = KeptEditOf(files_.parent_path());
    if (const auto killed = FinishKilledEdit(files_.parent_path(), record_); !killed)
        return killed.Error();
    const auto files = ListFiles(files_, OnDisk::PatAll);
    if (!files)
        return files.Error();
    const Path building = StagedNameFor(kept);
    Status status = MakeFolders(KeptFiles(building));
    for (const Path& file : *files)
        if (status)
            status = KeepFile(file, KeptFiles(building) / file.filename(), heartbeat);
    if (status)
        status = WriteWholeFile(KeptRecord(building), BytesOfRecord(record_), false);
    if (status)
        if (const auto failure = platform::Rename(building, kept))
            status = MakeFailure(ErrorCode::CannotWrite, TextOf(kept), failure);
    isKept_ = static_cast<bool>(status);
    if (!isKept_)
        (void)RemoveTree(building); // its name is one that the next start clears
    return status;
}

Status FilesBefore::KeepTarget(const Path& target, const Path& source)
{
    if (auto status = Keep({}); !status)
        return status;
    const Path kept = KeptEditOf(files_.parent_path());
    const auto isThere = IsFile(target);
    const auto facts = LookAt(source);
    if (!isThere || !facts)
        return isThere ? facts.Error() : isThere.Error();
    if (*isThere)
        if (auto status = KeepFile(target, KeptTargetFile(kept, targets_), {}); !status)
            return status;
    const std::string note =
        FormatKeptTarget({facts->size, facts->modifiedNs, !source.empty(),
                          target.lexically_relative(files_.parent_path()).native()});
    if (auto status = WriteWholeFile(KeptTargetNote(kept, targets_), note, false); !status)
        return status;
    ++targets_;
    return {};
}

Result<std::vector<ChangedFolder>> FilesBefore::TakeChanges(const Path& kept) const
{
    if (!isKept_)
        return std::vector<ChangedFolder>{};
    const Path levelFolder = files_.parent_path();
    const Path here = KeptEditOf(levelFolder);
    Differences differences{kept};
    if (auto status = CompareFiles(differences, here, files_); !status)
        return status.Error();
    std::set<std::string> seen; // of several notes the first one tells what was before
    for (int number = 0; number < targets_; ++number) {
        const auto target = ReadKeptTarget(here, number);
        if (!target)
            return target.Error();
        if (!seen.insert(target->place).second)
            continue;
        const Path place = levelFolder / target->place;
        if (auto status =
                differences.Compare(place, IfThere(KeptTargetFile(here, number)), IfThere(place));
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
    const Path kept = KeptEditOf(files_.parent_path());
    if (auto status = PutKeptEditBack(kept, files_); !status)
        return status;
    return DropKeptEdit(kept);
}

Result<bool> FinishKilledEdit(const Path& levelFolder, const LevelRecord& record)
{
    const Path kept = KeptEditOf(levelFolder);
    const auto isFree = IsFree(kept);
    if (!isFree)
        return isFree.Error();
    if (*isFree)
        return false;
    const auto before = ReadWholeFile(KeptRecord(kept), longestKeptNote);
    if (!before)
        return before.Error();
    const bool undone = *before == BytesOfRecord(record);
    const Path files = ResolvePath(InFolder(levelFolder, OnDisk::DirFiles));
    if (undone)
        if (auto status = PutKeptEditBack(kept, files); !status)
            return status.Error();
    if (auto status = DropKeptEdit(kept); !status)
        return status.Error();
    return undone;
}

} // namespace kestrova
