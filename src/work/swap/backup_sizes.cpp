#include "swap/backup_sizes.h"

#include "core/names.h"
#include "core/text.h"
#include "formats/trle_folder.h"
#include "originals/trle_tree.h"
#include "platform/files.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr double fullNeed = 251658240;
constexpr double compactNeed = 94371840;

/// The folder that a path begins with, as the names of trees have it (`\DATA`).
bool LiesIn(const Path& relative, std::string_view folder)
{
    return EqualNames(relative.begin()->native(), folder.substr(1));
}

/// Whether the compact form takes a file, by its path below the Level Editor's folder.
bool IsInCompact(const Path& relative)
{
    if (relative.has_parent_path())
        return LiesIn(relative, OnDisk::DirData) || LiesIn(relative, OnDisk::DirGraphics);
    const std::vector<std::string> patterns = Split(OnDisk::CompactPatterns, '|');
    return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
        return EndsWithName(relative.native(), std::string_view{pattern}.substr(1));
    });
}

} // namespace

double BackupNeed(bool full)
{
    return full ? fullNeed : compactNeed;
}

Result<BackupSizes> MeasureBackup(const Path& trle, const Heartbeat& heartbeat)
{
    const Path root = ResolvePath(trle);
    const auto tree = ScanThroughLinks(root, heartbeat);
    if (!tree)
        return tree.Error();
    BackupSizes sizes;
    for (const Path& file : tree->files) {
        const std::uint64_t size = platform::FactsOf(root / file).size;
        sizes.full += size;
        if (IsInCompact(file))
            sizes.compact += size;
    }
    return sizes;
}

BackupMeasuring::BackupMeasuring(const Path& trle)
    : worker_([this, trle](const std::stop_token& stop) {
          // A folder that cannot be read has no size to show; the copy says why.
          if (const auto sizes = MeasureBackup(trle, [&] { return !stop.stop_requested(); }))
              sizes_ = *sizes;
          done_ = true;
      })
{
}

std::optional<BackupSizes> BackupMeasuring::Sizes() const
{
    return done_ ? sizes_ : std::nullopt;
}

} // namespace kestrova
