#pragma once

#include <filesystem>
#include <functional>
#include <system_error>

namespace kestrova::platform
{

using Path = std::filesystem::path;

/// Every call of the file system that changes something passes here first, so that a test can
/// make any one of them fail or end the process there; so do those that read. Called from any
/// thread.
enum class FileAction {
    Create,
    Write,
    Sync,
    Rename,
    Exchange,
    Unlink,
    MakeFolder,
    RemoveFolder,
    SetMode,
    SetTimes,
    Truncate,
    // These change nothing.
    List, ///< the names of a folder
    Open, ///< a file, for reading alone
    Read, ///< bytes of an open file, once a piece
    Look, ///< what stands under a name
};

inline bool IsReading(FileAction action)
{
    return action >= FileAction::List;
}

class FileHook
{
public:
    virtual ~FileHook() = default;
    /// An error makes the changing call fail with it; nothing is changed then.
    virtual std::error_code Before(FileAction action, const Path& path) = 0;
    /// The same for a call that reads.
    virtual std::error_code BeforeReading(FileAction, const Path&) { return {}; }
};

/// Null, the default, lets everything through. The hook must outlive its use.
void SetFileHook(FileHook* hook);
/// The hook's answer; a change by name is held against the `SteadyFolders` too.
[[nodiscard]] std::error_code AskFileHook(FileAction action, const Path& path);
/// The hook's alone, for a path that is costly to put together: it is made only for a hook that is
/// there.
[[nodiscard]] std::error_code AskFileHookAt(FileAction action, const std::function<Path()>& path);

} // namespace kestrova::platform
