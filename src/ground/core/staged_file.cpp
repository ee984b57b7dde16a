#include "core/staged_file.h"

#include "core/files.h"
#include "core/leftovers.h"
#include "platform/file_content.h"
#include "platform/files.h"
#include "platform/places.h"
#include "platform/process.h"
#include "platform/real_path.h"

#include <atomic>
#include <fmt/format.h>
#include <functional>

namespace kestrova
{

Path StagedNameFor(const Path& target)
{
    static std::atomic<unsigned> counter{0};
    NotePlace(target.parent_path());
    return target.parent_path() /
           fmt::format("{}{:x}-{:x}", stagedPrefix, platform::OwnProcess(), ++counter);
}

StagedPlace::StagedPlace(const Path& target)
    : path_(StagedNameFor(platform::AbsolutePath(ResolvePath(target))))
{
}

StagedPlace& StagedPlace::operator=(StagedPlace&& other) noexcept
{
    Clear();
    path_ = std::exchange(other.path_, {});
    return *this;
}

void StagedPlace::Clear()
{
    if (!path_.empty() && platform::FactsOfLink(path_).kind != platform::FileKind::Missing)
        (void)platform::Unlink(path_); // a leftover is skipped by listings and cleared later
}

Status StagedPlace::MoveTo(const Path& target)
{
    const Path place = ResolvePath(target);
    if (const auto failure = platform::Rename(path_, place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    path_.clear();
    return {};
}

StagedFile::StagedFile(const Path& target) : target_(target), staged_(StagedNameFor(target)) {}

StagedFile::~StagedFile()
{
    if (pending_)
        (void)platform::Unlink(staged_); // a leftover is skipped by listings and cleared later
}

Status StagedFile::Open()
{
    std::error_code failure = platform::File::CreateNew(staged_, file_);
    if (failure == std::errc::file_exists) { // left by a killed program with the same number
        (void)platform::Unlink(staged_);
        failure = platform::File::CreateNew(staged_, file_);
    }
    if (failure)
        return MakeFailure(ErrorCode::CannotOpen, TextOf(target_), failure);
    pending_ = true;
    return {};
}

Status StagedFile::Write(std::string_view bytes)
{
    if (const auto failure = file_.Write(std::as_bytes(std::span(bytes))))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(target_), failure);
    return {};
}

Status StagedFile::Commit(bool flush)
{
    auto status = PutStaged(file_, staged_, target_, flush);
    pending_ = pending_ && !staged_.empty();
    return status;
}

Status PutStaged(platform::File& file, Path& staged, const Path& target, bool flush)
{
    const auto failed = [&](const std::error_code& failure) {
        return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
    };
    if (flush)
        if (const auto failure = file.Sync())
            return failed(failure);
    if (const auto failure = file.Close())
        return failed(failure);
    if (const auto failure = platform::Rename(staged, target))
        return failed(failure);
    staged.clear();
    if (flush)
        if (const auto failure = platform::SyncFolder(target.parent_path()))
            return failed(failure);
    return {};
}

Result<platform::FileFacts> LookAtReplaced(const Path& target)
{
    const auto failed = [&](const std::error_code& failure) {
        return MakeFailure(ErrorCode::CannotOpen, TextOf(target), failure);
    };
    platform::FileFacts old;
    if (const auto failure = platform::LookAtLink(target, old))
        return failed(failure);
    if (old.kind == platform::FileKind::Folder)
        return failed(std::make_error_code(std::errc::is_a_directory));
    if (old.kind == platform::FileKind::File && !platform::MayWrite(target))
        return failed(std::make_error_code(std::errc::permission_denied));
    return old;
}

namespace
{

/// Where a write in place would end up: behind links, in the existing spelling.
Result<Path> BehindLinks(const Path& target)
{
    auto resolved = FindPath(target);
    if (!resolved)
        return resolved;
    platform::FileFacts facts;
    if (const auto failure = platform::LookAtLink(*resolved, facts))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(*resolved), failure);
    if (facts.kind != platform::FileKind::Link)
        return resolved;
    Path behind;
    return platform::RealPathSoFar(*resolved, behind) ? resolved : behind;
}

Status WriteStaged(const Path& target, std::string_view content, std::string_view tail, bool flush)
{
    const auto old = LookAtReplaced(target);
    if (!old)
        return old.Error();
    StagedFile staged{target};
    if (auto status = staged.Open(); !status)
        return status;
    if (auto status = staged.Write(content); !status)
        return status;
    if (!tail.empty())
        if (auto status = staged.Write(tail); !status)
            return status;
    if (old->kind == platform::FileKind::File)
        if (const auto failure = platform::SetMode(staged.StagedPath(), old->mode))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
    return staged.Commit(flush);
}

} // namespace

Status WriteWholeFile(const Path& target, std::string_view content, bool flush)
{
    const auto place = FindPath(target);
    return place ? WriteStaged(*place, content, {}, flush) : place.Error();
}

Status WriteRecordFile(const Path& target, std::string_view content, bool flush)
{
    const auto place = FindPath(target);
    if (!place)
        return place.Error();
    platform::FileFacts facts;
    if (const auto failure = platform::Look(*place, facts))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(*place), failure);
    std::string old;
    std::string_view tail;
    if (facts.kind == platform::FileKind::File && facts.size > content.size()) {
        if (const auto failure = platform::ReadAll(*place, old))
            return MakeFailure(ErrorCode::CannotRead, TextOf(*place), failure);
        tail = std::string_view{old}.substr(std::min(content.size(), old.size()));
    }
    return WriteStaged(*place, content, tail, flush);
}

Status WriteDocument(const Path& target, std::string_view content)
{
    const auto place = BehindLinks(target);
    return place ? WriteRecordFile(*place, content) : place.Error();
}

Status WriteKeptFile(const Path& target, std::string_view content)
{
    const auto place = BehindLinks(target);
    return place ? WriteWholeFile(*place, content) : place.Error();
}

namespace
{

void ClearStaged(const Path& folder, const std::function<bool(const std::string& name)>& isDead)
{
    std::vector<platform::FolderEntry> entries;
    if (platform::ListFolder(folder, entries))
        return;
    for (const auto& entry : entries)
        if (entry.name.starts_with(stagedPrefix) && entry.name != lockFileName &&
            (entry.kind == platform::FileKind::File ||
             entry.kind == platform::FileKind::Other) && // a pipe between two tools
            isDead(entry.name))
            (void)platform::Unlink(folder / entry.name); // tried again at the next occasion
}

} // namespace

void ClearStagedLeftovers(const Path& folder)
{
    ClearStaged(folder, [](const std::string&) { return true; });
}

void ClearLeftoversOfKilled(const Path& folder)
{
    ClearStaged(folder, [](const std::string& name) {
        const auto owner = OwnerOfStaged(name);
        return owner && !platform::IsRunning(*owner);
    });
}

} // namespace kestrova
