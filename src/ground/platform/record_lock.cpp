#include "platform/record_lock.h"

#include "platform/files.h"

#include <fcntl.h>
#include <unistd.h>

namespace kestrova::platform
{

bool IsLockedByOther(const std::filesystem::path& file)
{
    File opened;
    if (File::OpenForRead(file, opened))
        return false;
    struct flock wish {
    };
    wish.l_type = F_WRLCK;
    wish.l_whence = SEEK_SET;
    wish.l_len = 1;
    return ::fcntl(opened.Descriptor(), F_GETLK, &wish) == 0 && wish.l_type != F_UNLCK;
}

} // namespace kestrova::platform
