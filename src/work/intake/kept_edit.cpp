#include "intake/kept_edit.h"

#include "archive/stored_notes.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "history/watched_files.h"
#include "intake/file_names.h"
#include "platform/files.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>

namespace kestrova
{

Path KeptEditOf(const Path& levelFolder)
{
    return InFolder(levelFolder, OnDisk::FragBeforeEdit);
}

Path KeptFiles(const Path& kept)
{
    return InFolder(kept, OnDisk::DirFiles);
}

Path KeptRecord(const Path& kept)
{
    return InFolder(kept, OnDisk::FragKeptRecord);
}

Path KeptTargetNote(const Path& kept, int number)
{
    return kept / (std::to_string(number) + std::string{OnDisk::EndingKeptTarget});
}

Path KeptTargetFile(const Path& kept, int number)
{
    return kept / (std::to_string(number) + std::string{OnDisk::EndingKeptFile});
}

namespace
{

Status EditNotWritten(const Path& file, const std::error_code& failure)
{
    return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
}

std::optional<KeptTarget> ParseTarget(const std::string& bytes)
{
    std::istringstream text{bytes};
    KeptTarget target;
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

} // namespace

std::string FormatKeptTarget(const KeptTarget& target)
{
    std::ostringstream text;
    text << target.size << ' ' << target.modifiedNs << ' ' << target.hasSource << ' '
         << target.place;
    return text.str();
}

Result<KeptTarget> ReadKeptTarget(const Path& kept, int number)
{
    const auto bytes = ReadWholeFile(KeptTargetNote(kept, number), longestKeptNote);
    if (!bytes)
        return bytes.Error();
    auto target = ParseTarget(*bytes);
    if (!target || !StaysBelow(target->place))
        return MakeFailure(ErrorCode::Damaged, TextOf(KeptTargetNote(kept, number)));
    return std::move(*target);
}

Status KeepFile(const Path& file, const Path& kept, const Heartbeat& heartbeat)
{
    CopyOptions options;
    options.verify = Verify::Content;
    if (heartbeat)
        options.progress = [&](std::uint64_t) { return heartbeat(); };
    return GiveSecondName(file, kept, options);
}

namespace
{

/// The kept file stands in its place and is kept still, so that this may be done again.
Status BringBack(const Path& kept, const Path& place)
{
    platform::FileFacts before;
    platform::FileFacts now;
    auto looked = platform::Look(kept, before);
    if (!looked)
        looked = platform::LookAtLink(place, now);
    if (looked)
        return EditNotWritten(place, looked);
    if (now.kind == platform::FileKind::File &&
        ((now.inode == before.inode && now.device == before.device) || SameContent(kept, place)))
        return {};
    StagedPlace staged{place};
    if (auto status = KeepFile(kept, staged.Staged(), {}); !status)
        return status;
    const auto failure = platform::Rename(staged.Staged(), place);
    return failure ? EditNotWritten(place, failure) : Status{};
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
    const auto before = ListFiles(KeptFiles(kept), OnDisk::PatAll);
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
                first.Note(EditNotWritten(file, failure));
    if (!first.Answer())
        return first.Answer();
    return FlushFolder(files);
}

/// Only what is as the edit left it goes.
Status PutTargetBack(const Path& kept, int number, const Path& levelFolder)
{
    const auto target = ReadKeptTarget(kept, number);
    if (!target)
        return target.Error();
    const Path place = levelFolder / target->place;
    const Path before = KeptTargetFile(kept, number);
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
    return failure ? EditNotWritten(place, failure) : Status{};
}

Status PutTargetsBack(const Path& kept, const Path& levelFolder)
{
    int count = 0;
    for (;; ++count) {
        const auto isFree = IsFree(KeptTargetNote(kept, count));
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

} // namespace

Status DropKeptEdit(const Path& kept)
{
    const Path leaving = StagedNameFor(kept);
    if (const auto failure = platform::Rename(kept, leaving))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(kept), failure);
    (void)RemoveTree(leaving);
    return {};
}

Status PutKeptEditBack(const Path& kept, const Path& files)
{
    DoubtStoredNote(files.parent_path()); // a kill may have left what the edit noted
    FirstFailure first;
    first.Note(PutFilesBack(kept, files));
    first.Note(PutTargetsBack(kept, files.parent_path()));
    return first.Answer();
}

} // namespace kestrova
