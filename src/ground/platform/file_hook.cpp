#include "platform/file_hook.h"

#include <atomic>

namespace kestrova::platform
{

namespace
{

std::atomic<FileHook*> fileHook{nullptr};

} // namespace

void SetFileHook(FileHook* hook)
{
    fileHook = hook;
}

std::error_code AskFileHook(FileAction action, const Path& path)
{
    FileHook* hook = fileHook;
    if (hook == nullptr)
        return {};
    return IsReading(action) ? hook->BeforeReading(action, path) : hook->Before(action, path);
}

std::error_code AskFileHookAt(FileAction action, const std::function<Path()>& path)
{
    return fileHook.load() == nullptr ? std::error_code{} : AskFileHook(action, path());
}

} // namespace kestrova::platform
