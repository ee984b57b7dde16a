#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

enum class SizeKind { Files, Extras };

/// As a record holds a size: 32 bits, kept within them.
std::int32_t SizeField(double bytes);
/// Adds bytes to a level's size and, but for the record at index 0, to the archive's total.
void CountLevelSize(Archive& archive, double delta, SizeKind kind, std::size_t index);
/// The same, and saves.
void AddLevelSize(const ArchiveParts& parts, double delta, SizeKind kind, std::size_t index);
/// Bytes of a level folder's savegames, their backup and its screen-shots.
Result<double> ExtrasSizeOf(const Path& levelFolder);
/// Measures a level's folders anew and saves. Files on a disc keep their size, and so does what
/// cannot be read.
void RefreshLevelSizes(const ArchiveParts& parts, LevelCode code);
/// Measures all levels, with progress when asked, sums the totals anew and saves. `Stopped` by the
/// person: sizes measured so far are kept. Levels that cannot be read keep theirs; the failure's
/// sentence tells of the first of them, after a Stop too.
Status RecomputeArchiveSize(const ArchiveParts& parts, bool withProgress);

} // namespace kestrova
