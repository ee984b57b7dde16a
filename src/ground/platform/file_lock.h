#pragma once

#include "platform/files.h"

namespace kestrova::platform
{

/// An advisory lock that one process holds on a file, given up when the process ends however it
/// ends. The file keeps the holder's words so that a second process can name it.
class FileLock
{
public:
    FileLock() = default;
    FileLock(FileLock&&) noexcept = default;
    FileLock& operator=(FileLock&&) noexcept = default;

    /// `resource_unavailable_try_again` when another holds it; `holder` then has its words.
    static std::error_code Take(const Path& file, const std::string& words, FileLock& lock,
                                std::string& holder);
    [[nodiscard]] bool Held() const { return file_.IsOpen(); }

private:
    File file_;
};

} // namespace kestrova::platform
