#include "core/copying.h"

#include "core/files.h"
#include "core/staged_file.h"
#include "platform/file_content.h"

namespace kestrova
{

using platform::FileFacts;
using platform::FileKind;

Status CopyFileOver(const Path& source, const Path& target, const CopyOptions& options)
{
    const Path from = ResolvePath(source);
    const auto place = options.spelled ? Result<Path>{target} : FindPath(target);
    if (!place)
        return place.Error();
    const Path& to = *place;
    platform::File input;
    if (const auto failure = platform::File::OpenForRead(from, input))
        return MakeFailure(ErrorCode::CannotRead, TextOf(from), failure);
    const FileFacts facts = input.Facts();
    if (platform::FactsOfLink(to).kind == FileKind::Folder)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(to),
                           std::make_error_code(std::errc::is_a_directory));
    const FileFacts old = platform::FactsOf(to);
    if (old.kind == FileKind::File && old.device == facts.device && old.inode == facts.inode)
        return {}; // a file over itself: it already holds these bytes

    StagedFile staged{to};
    if (auto status = staged.Open(); !status)
        return status;
    bool isClone = false;
    if (const auto failure =
            platform::CopyContent(input, staged.Handle(), options.progress, &isClone)) {
        // Either side may have failed; whoever reads is told of the one that did.
        std::string hash;
        const bool isRead = failure != std::errc::io_error || !platform::HashOfFile(from, hash);
        return isRead ? MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure)
                      : MakeFailure(ErrorCode::CannotRead, TextOf(from), failure);
    }
    if (staged.Handle().Facts().size != input.Facts().size)
        return MakeFailure(ErrorCode::Differs, TextOf(to));
    // A clone is the same blocks: reading it back would compare them with themselves.
    if (options.verify == Verify::Content && !isClone && !SameContent(from, staged.StagedPath()))
        return MakeFailure(ErrorCode::Differs, TextOf(to));
    const std::uint32_t rights =
        options.rights != 0 ? options.rights : (facts.mode & 0777U) | 0600U;
    if (const auto failure = platform::SetMode(staged.StagedPath(), rights))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure);
    // Some disks keep no times; the bytes are what counts.
    (void)platform::SetModified(staged.StagedPath(), facts.modifiedNs);
    if (options.flush)
        if (const auto failure = staged.Handle().Sync())
            return MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure);
    return staged.Commit(options.flushName);
}

Status CopyMatching(const Path& source, const Path& target, std::string_view pattern,
                    const CopyOptions& options)
{
    const auto files = ListFiles(source, pattern);
    if (!files)
        return files.Error();
    Status answer;
    const Path folder = ResolvePath(target);
    for (const Path& file : *files)
        if (auto status = CopyFileOver(file, folder / file.filename(), options); !status && answer)
            answer = std::move(status);
    return answer;
}

Status FlushFolder(const Path& folder)
{
    const Path place = ResolvePath(folder);
    if (const auto failure = platform::SyncFolder(place))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
    return {};
}

Status MoveFileOver(const Path& source, const Path& target)
{
    const Path from = ResolvePath(source);
    const auto place = FindPath(target);
    if (!place)
        return place.Error();
    const Path& to = *place;
    const auto failure = platform::Rename(from, to);
    if (!failure)
        return {};
    if (failure != std::errc::cross_device_link)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure);
    if (auto status = CopyFileOver(from, to, {Verify::Content, true, true, {}}); !status)
        return status;
    return DeleteFile(from);
}

} // namespace kestrova
