#pragma once

#include "platform/files.h"

namespace kestrova::platform
{

/// Tells which files of a folder were closed after they had been written, or came there by a new
/// name (inotify). It holds a handle of the system until its end.
class FolderWatch
{
public:
    FolderWatch() = default;
    FolderWatch(FolderWatch&& other) noexcept;
    FolderWatch& operator=(FolderWatch&& other) noexcept;
    ~FolderWatch();

    /// Begins anew with this folder. An error where the system watches no folder of this kind.
    std::error_code Open(const Path& folder);
    [[nodiscard]] bool IsOpen() const { return handle_ >= 0; }
    /// Exact names since the last asking, each once. It never waits; a folder that was removed or
    /// renamed closes the watch.
    std::vector<std::string> TakeNames();
    void Close();

private:
    int handle_ = -1;
};

} // namespace kestrova::platform
