#include "platform/fifo.h"

#include "platform/file_hook.h"
#include "platform/last_error.h"

#include <sys/stat.h>

namespace kestrova::platform
{

std::error_code MakeFifo(const std::filesystem::path& path)
{
    if (const auto failure = AskFileHook(FileAction::Create, path))
        return failure;
    return ::mkfifo(path.c_str(), S_IRUSR | S_IWUSR) == 0 ? std::error_code{} : LastError();
}

} // namespace kestrova::platform
