#pragma once

#include "intake/package_sources.h"

/// Files in the form in which an archive keeps them (`.zl`), that come in with a source. They come
/// in as what they are: left in that form they would go past every limit and expand at Play.
namespace kestrova
{

bool IsStoredForm(const Path& file);

/// How much a source may still become.
struct ExpandLimit {
    Path source;            ///< what the player gave
    std::uint64_t most = 0; ///< bytes, beyond which it counts as made to do harm
};

/// What a source of that size may become at most.
std::uint64_t MostBytesOf(std::uint64_t sourceSize, const UnpackLimits& limits);

/// Expands `stored` to `target`; `limit` counts down. `Damaged`, with words for the person as its
/// subject, when it is not whole or goes beyond the limit.
Status ExpandStored(Machine& machine, const Path& stored, const Path& target, ExpandLimit& limit,
                    ProgressScope& progress);

/// Unpacked files: what they are in place of their stored form. Names that are taken in their
/// folder get a number, and stand in the report.
Status ExpandStoredFiles(Machine& machine, std::vector<Path>& files, ExpandLimit limit,
                         ProgressScope& progress, SourceReport& report);

} // namespace kestrova
