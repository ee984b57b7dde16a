#pragma once

#include "core/names.h"
#include "platform/files.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace kestrova
{

/// Small pictures that are kept between runs, as files of a folder of the desktop's cache. Several
/// threads may use it. It is worth nothing but time: where it cannot be read or written, everything
/// works without it, and nothing is told.
class CoverShelf
{
public:
    static constexpr std::uint64_t usualBytes = 64U << 20;

    /// Of an empty folder nothing is kept. It is made when the first picture comes.
    explicit CoverShelf(Path folder, std::uint64_t mostBytes = usualBytes)
        : folder_(std::move(folder)), mostBytes_(mostBytes)
    {
    }
    /// The name of what was made of that file as it is now.
    static std::string NameOf(const Path& file, const platform::FileFacts& facts);

    std::optional<std::string> Find(const std::string& name);
    /// Beyond the bound those that were not asked for the longest go.
    void Keep(const std::string& name, const std::string& bytes);

private:
    bool Write(const std::string& name, const std::string& bytes) const;
    void DropOldest();

    const Path folder_;
    const std::uint64_t mostBytes_;
    std::mutex mutex_;
    std::optional<std::uint64_t> bytes_; ///< of all that is kept; no value: not counted yet
    bool closed_ = false;                ///< the folder takes nothing
};

} // namespace kestrova
