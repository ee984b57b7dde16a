#include "platform/open_file.h"

#include "platform/file_hook.h"
#include "platform/files.h"
#include "platform/folder_memory.h"
#include "platform/last_error.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kestrova::platform
{

File::File(File&& other) noexcept : descriptor_(other.descriptor_), path_(std::move(other.path_))
{
    other.descriptor_ = -1;
}

File& File::operator=(File&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    std::swap(path_, other.path_);
    return *this;
}

File::~File()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

std::error_code File::Open(const Path& path, int flags, File& file)
{
    File opened;
    opened.descriptor_ = ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, 0666);
    if (opened.descriptor_ < 0)
        return LastError();
    opened.path_ = path;
    if ((flags & O_CREAT) != 0)
        NoteName(path, true);
    file = std::move(opened);
    return {};
}

std::error_code File::OpenForRead(const Path& path, File& file)
{
    // A pipe or a device must not hold the program up; only files and folders have content here.
    const FileKind kind = FactsOf(path).kind;
    if (kind == FileKind::Other)
        return std::make_error_code(std::errc::invalid_argument);
    if (kind == FileKind::Folder)
        return std::make_error_code(std::errc::is_a_directory);
    if (const auto failure = AskFileHook(FileAction::Open, path))
        return failure;
    return Open(path, O_RDONLY, file);
}

std::error_code File::Create(const Path& path, File& file)
{
    if (const auto failure = AskFileHook(FileAction::Create, path))
        return failure;
    return Open(path, O_RDWR | O_CREAT | O_TRUNC, file);
}

std::error_code File::CreateNew(const Path& path, File& file)
{
    if (const auto failure = AskFileHook(FileAction::Create, path))
        return failure;
    return Open(path, O_RDWR | O_CREAT | O_EXCL, file);
}

std::error_code File::OpenForUpdate(const Path& path, File& file)
{
    if (const auto failure = AskFileHook(FileAction::Create, path))
        return failure;
    return Open(path, O_RDWR | O_CREAT | O_NOFOLLOW, file);
}

std::error_code File::Read(std::span<std::byte> into, std::size_t& got)
{
    got = 0;
    if (const auto failure = AskFileHook(FileAction::Read, path_))
        return failure;
    for (;;) {
        const ssize_t count = ::read(descriptor_, into.data(), into.size());
        if (count >= 0) {
            got = static_cast<std::size_t>(count);
            return {};
        }
        if (errno != EINTR)
            return LastError();
    }
}

std::error_code File::ReadAt(std::uint64_t offset, std::span<std::byte> into, std::size_t& got)
{
    got = 0;
    if (const auto failure = AskFileHook(FileAction::Read, path_))
        return failure;
    while (got < into.size()) {
        const ssize_t count = ::pread(descriptor_, into.data() + got, into.size() - got,
                                      static_cast<off_t>(offset + got));
        if (count == 0)
            return {};
        if (count > 0)
            got += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return LastError();
    }
    return {};
}

std::error_code File::Write(std::span<const std::byte> bytes)
{
    if (const auto failure = AskFileHook(FileAction::Write, path_))
        return failure;
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return LastError();
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

std::error_code File::WriteAt(std::uint64_t offset, std::span<const std::byte> bytes)
{
    if (const auto failure = AskFileHook(FileAction::Write, path_))
        return failure;
    while (!bytes.empty()) {
        const ssize_t count =
            ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return LastError();
        }
        offset += static_cast<std::uint64_t>(count);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return {};
}

std::error_code File::Sync()
{
    if (const auto failure = AskFileHook(FileAction::Sync, path_))
        return failure;
    return ::fdatasync(descriptor_) == 0 ? std::error_code{} : LastError();
}

std::error_code File::Truncate(std::uint64_t size)
{
    if (const auto failure = AskFileHook(FileAction::Truncate, path_))
        return failure;
    return ::ftruncate(descriptor_, static_cast<off_t>(size)) == 0 ? std::error_code{}
                                                                   : LastError();
}

std::error_code File::Close()
{
    const int descriptor = descriptor_;
    descriptor_ = -1;
    return descriptor < 0 || ::close(descriptor) == 0 ? std::error_code{} : LastError();
}

FileFacts File::Facts() const
{
    struct stat status {
    };
    return ::fstat(descriptor_, &status) == 0 ? FactsFrom(status) : FileFacts{};
}

} // namespace kestrova::platform
