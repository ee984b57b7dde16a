#include "platform/file_content.h"

#include "platform/content_hash.h"
#include "platform/files.h"
#include "platform/last_error.h"

#include <algorithm>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kestrova::platform
{

std::size_t BufferSize(std::uint64_t fileSize)
{
    return static_cast<std::size_t>(std::clamp<std::uint64_t>(fileSize + 1, 4096, 1 << 20));
}

namespace
{

/// For file systems on which the kernel copies nothing itself.
std::error_code CopyThroughMemory(File& from, File& to, std::uint64_t done,
                                  const CopyProgress& progress)
{
    // A buffer no larger than the file: most files here are small, and clearing memory costs.
    std::vector<std::byte> buffer(BufferSize(from.Facts().size));
    for (;;) {
        std::size_t got = 0;
        if (const auto failure = from.Read(buffer, got))
            return failure;
        if (got == 0)
            return {};
        if (const auto failure = to.Write(std::span(buffer).first(got)))
            return failure;
        done += got;
        if (progress && !progress(done))
            return std::make_error_code(std::errc::operation_canceled);
    }
}

} // namespace

std::error_code CopyContent(File& from, File& to, const CopyProgress& progress, bool* isClone)
{
    constexpr std::size_t slice = std::size_t{8} << 20;
    std::size_t none = 0;
    if (const auto failure = from.Read({}, none))
        return failure;
    if (const auto failure = to.Write({}))
        return failure;
    const bool cloned = ::ioctl(to.Descriptor(), FICLONE, from.Descriptor()) == 0;
    if (isClone != nullptr)
        *isClone = cloned;
    if (cloned)
        return {};
    std::uint64_t done = 0;
    for (;;) {
        const ssize_t count =
            ::copy_file_range(from.Descriptor(), nullptr, to.Descriptor(), nullptr, slice, 0);
        if (count < 0) {
            if (errno == EINTR)
                continue;
            if (errno == EXDEV || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP)
                return CopyThroughMemory(from, to, done, progress);
            return LastError();
        }
        if (count == 0) // some file systems answer 0 for files that do have content
            return CopyThroughMemory(from, to, done, progress);
        done += static_cast<std::uint64_t>(count);
        if (progress && !progress(done))
            return std::make_error_code(std::errc::operation_canceled);
    }
}

std::error_code ReadAll(const Path& path, std::string& content, std::uint64_t limit)
{
    content.clear();
    File file;
    if (const auto failure = File::OpenForRead(path, file))
        return failure;
    const std::uint64_t size = file.Facts().size;
    if (size > limit)
        return std::make_error_code(std::errc::file_too_large);
    // One byte more than the size tells the end without another round.
    content.resize(static_cast<std::size_t>(size) + 1);
    std::size_t filled = 0;
    for (;;) {
        std::size_t got = 0;
        if (const auto failure =
                file.Read(std::as_writable_bytes(std::span(content)).subspan(filled), got))
            return failure;
        filled += got;
        if (got == 0)
            break;
        if (filled > limit)
            return std::make_error_code(std::errc::file_too_large);
        if (filled == content.size())
            content.resize(content.size() * 2);
    }
    content.resize(filled);
    return {};
}

std::string HashOf(std::span<const std::byte> bytes)
{
    ContentHash hash;
    hash.Add(bytes);
    return hash.Digits();
}

std::error_code HashOfFile(const Path& path, std::string& hash)
{
    File file;
    if (const auto failure = File::OpenForRead(path, file))
        return failure;
    std::vector<std::byte> buffer(BufferSize(file.Facts().size));
    ContentHash sum;
    std::error_code failure;
    std::size_t got = 0;
    while (!(failure = file.Read(buffer, got)) && got > 0)
        sum.Add(std::span(buffer).first(got));
    hash = sum.Digits();
    return failure;
}

} // namespace kestrova::platform
