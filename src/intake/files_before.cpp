#include "intake/files_before.h"

#include "catalogue/message.h"
#include "core/look.h"
#include "core/staged_file.h"
#include "platform/look.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

/// A second name where that can be: whatever changes a file here writes another one in its place.
Status KeepOne(const Path& file, const Path& kept, const Heartbeat& heartbeat)
{
    if (!platform::HardLink(file, kept))
        return {};
    CopyOptions options;
    options.verify = Verify::Content;
    if (heartbeat)
        options.progress = [&](std::uint64_t) { return heartbeat(); };
    return CopyFileOver(file, kept, options);
}

} // namespace

FilesBefore::FilesBefore(Path folder)
    : folder_(std::move(folder)),
      kept_(InFolder(folder_.parent_path(), RowText(Msg::FragBeforeEdit)))
{
}

FilesBefore::~FilesBefore()
{
    if (isKept_)
        (void)RemoveTree(kept_); // the next change of the level removes what stays
    for (const Target& target : targets_)
        if (!target.kept.empty())
            (void)platform::Unlink(target.kept); // no listing shows it
}

Status FilesBefore::Keep(const Heartbeat& heartbeat)
{
    if (isKept_)
        return {};
    const auto isFree = IsFree(kept_);
    if (!isFree)
        return isFree.Error();
    if (!*isFree)
        if (auto status = RemoveTree(kept_); !status)
            return status;
    const auto files = ListFiles(folder_, RowText(Msg::PatAll));
    if (!files)
        return files.Error();
    if (auto status = MakeFolder(kept_); !status)
        return status;
    isKept_ = true;
    for (const Path& file : *files)
        if (auto status = KeepOne(file, kept_ / file.filename(), heartbeat); !status) {
            (void)RemoveTree(kept_);
            isKept_ = false;
            return status;
        }
    return {};
}

Status FilesBefore::KeepTarget(const Path& target, const Path& source)
{
    Path kept;
    const auto isThere = IsFile(target);
    const auto facts = LookAt(source);
    if (!isThere || !facts)
        return isThere ? facts.Error() : isThere.Error();
    if (*isThere) {
        kept = StagedNameFor(target);
        if (auto status = KeepOne(target, kept, {}); !status)
            return status;
    }
    targets_.push_back({target, std::move(kept), source, facts->size, facts->modifiedNs});
    return {};
}

Status FilesBefore::PutFilesBack()
{
    if (!isKept_)
        return {};
    const auto kept = ListFiles(kept_, RowText(Msg::PatAll));
    const auto now = ListFiles(folder_, RowText(Msg::PatAll));
    if (!kept || !now) {
        isKept_ = false; // they stay, until the level is edited again
        return kept ? now.Error() : kept.Error();
    }
    std::set<std::string> names;
    for (const Path& file : *kept)
        names.insert(file.filename().native());
    Status first;
    const auto note = [&](const Path& file, const std::error_code& failure) {
        if (failure && first)
            first = MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    };
    for (const Path& file : *kept)
        note(file, platform::Rename(file, folder_ / file.filename()));
    for (const Path& file : *now)
        if (!names.contains(file.filename().native()))
            note(file, platform::Unlink(file));
    if (!first)
        return first;
    return FlushFolder(folder_);
}

Status FilesBefore::PutTargetsBack()
{
    Status first;
    for (auto target = targets_.rbegin(); target != targets_.rend(); ++target) {
        auto& [file, kept, source, size, modifiedNs] = *target;
        platform::FileFacts now;
        std::error_code failure = platform::Look(file, now);
        const bool ours = source.empty() || (now.size == size && now.modifiedNs == modifiedNs);
        if (!kept.empty())
            failure = platform::Rename(kept, file);
        else if (!failure && now.kind == platform::FileKind::File && ours)
            failure = platform::Unlink(file);
        if (!failure)
            kept.clear();
        else if (first)
            first = MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    }
    return first;
}

Status FilesBefore::PutBack()
{
    const Status files = PutFilesBack();
    const Status targets = PutTargetsBack();
    return files ? targets : files;
}

} // namespace kestrova
