#include "platform/file_lock.h"

#include "platform/files.h"

#include "platform/file_content.h"
#include "platform/last_error.h"

#include <sys/file.h>

namespace kestrova::platform
{

std::error_code FileLock::Take(const Path& file, const std::string& words, FileLock& lock,
                               std::string& holder)
{
    FileLock taken;
    auto opened = File::OpenForUpdate(file, taken.file_);
    if (opened == std::errc::too_many_symbolic_link_levels &&
        !Unlink(file)) // no lock of this program
        opened = File::OpenForUpdate(file, taken.file_);
    if (opened == std::errc::permission_denied) // another user's lock file can be held all the same
        opened = File::OpenForRead(file, taken.file_);
    if (opened)
        return opened;
    if (::flock(taken.file_.Descriptor(), LOCK_EX | LOCK_NB) != 0) {
        const std::error_code failure = LastError();
        if (failure == std::errc::resource_unavailable_try_again)
            if (ReadAll(file, holder, 4096)) // the name is a courtesy; the lock itself has answered
                holder.clear();
        return failure;
    }
    // Whoever cannot write the words still holds the lock.
    if (!taken.file_.Truncate(0))
        (void)taken.file_.Write(std::as_bytes(std::span(words)));
    lock = std::move(taken);
    return {};
}

} // namespace kestrova::platform
