#pragma once

#include "core/files.h"
#include "core/result.h"

#include <atomic>
#include <optional>
#include <thread>

/// How many bytes a copy of a Level Editor's folder takes.
namespace kestrova
{

struct BackupSizes {
    std::uint64_t full = 0;
    std::uint64_t compact = 0;
    bool operator==(const BackupSizes&) const = default;
};

/// What both forms take, links gone through as the copy does. The heartbeat's False ends it.
Result<BackupSizes> MeasureBackup(const Path& trle, const Heartbeat& heartbeat = {});

/// What must be free for that form, in bytes: the figures of the Level Editor's own distribution.
double BackupNeed(bool full);

/// Measures one folder beside all other work, however slow its disk is.
class BackupMeasuring
{
public:
    explicit BackupMeasuring(const Path& trle);
    /// An unfinished one ends at the next folder.
    ~BackupMeasuring() = default;
    BackupMeasuring(const BackupMeasuring&) = delete;
    BackupMeasuring& operator=(const BackupMeasuring&) = delete;

    [[nodiscard]] bool Done() const { return done_; }
    /// Nothing before it is done, and nothing where the folder cannot be read.
    [[nodiscard]] std::optional<BackupSizes> Sizes() const;

private:
    std::optional<BackupSizes> sizes_;
    std::atomic<bool> done_{false};
    std::jthread worker_; ///< last, so that it is joined first
};

} // namespace kestrova
