#include "platform/file_facts.h"

#include "platform/clock.h"

#include <sys/stat.h>

namespace kestrova::platform
{

FileFacts FactsFrom(const struct stat& status)
{
    FileFacts facts;
    if (S_ISREG(status.st_mode))
        facts.kind = FileKind::File;
    else if (S_ISDIR(status.st_mode))
        facts.kind = FileKind::Folder;
    else if (S_ISLNK(status.st_mode))
        facts.kind = FileKind::Link;
    else
        facts.kind = FileKind::Other;
    facts.size = static_cast<std::uint64_t>(status.st_size);
    facts.modifiedNs =
        std::int64_t{status.st_mtim.tv_sec} * nsOfSecond + std::int64_t{status.st_mtim.tv_nsec};
    facts.changedNs =
        std::int64_t{status.st_ctim.tv_sec} * nsOfSecond + std::int64_t{status.st_ctim.tv_nsec};
    facts.device = status.st_dev;
    facts.inode = status.st_ino;
    facts.mode = status.st_mode & 07777U;
    return facts;
}

} // namespace kestrova::platform
