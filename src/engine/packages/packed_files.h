#pragma once

#include "core/files.h"
#include "formats/rar_headers.h"

#include <cstdint>
#include <optional>

/// What a package itself says of its files, to be held against what a tool made of them.
namespace kestrova
{

struct Proof {
    std::vector<std::string> lacking; ///< names of what did not come out as the package says
    std::vector<Path> wrong;          ///< what came out and is none of the package's files
    std::size_t whole = 0;            ///< how many files came out right
};

/// Compares by content alone, since tools write names in ways of their own. Of several files of one
/// name in the package the last one counts. `Stopped` by the heartbeat.
Result<Proof> ProveUnpacked(const Path& folder, const std::vector<PackedFile>& packed,
                            const Heartbeat& heartbeat);

} // namespace kestrova
