#include "platform/file_hook.h"

#include "platform/steady_folders.h"

#include <atomic>

namespace kestrova::platform
{

namespace
{

std::atomic<FileHook*> fileHook{nullptr};

/// By name; what is open already stays the file that it is.
bool ChangesNames(FileAction action)
{
    return !IsReading(action) && action != FileAction::Write && action != FileAction::Sync &&
           action != FileAction::Truncate;
}

} // namespace

void SetFileHook(FileHook* hook)
{
    fileHook = hook;
}

std::error_code AskFileHook(FileAction action, const Path& path)
{
    if (FileHook* hook = fileHook)
        if (const auto failure =
                IsReading(action) ? hook->BeforeReading(action, path) : hook->Before(action, path))
            return failure;
    return ChangesNames(action) ? AskSteadyFolders(path) : std::error_code{};
}

std::error_code AskFileHookAt(FileAction action, const std::function<Path()>& path)
{
    return fileHook.load() == nullptr ? std::error_code{} : AskFileHook(action, path());
}

} // namespace kestrova::platform
