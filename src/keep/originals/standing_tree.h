#pragma once

#include "formats/loan_note.h"

#include <unordered_map>

namespace kestrova
{

/// Which links of a tree are gone through. What a stranger's program made leads anywhere.
struct KnownLinks {
    bool all = false;                  ///< whichever there are
    std::vector<StandingLink> links{}; ///< else these, as long as they say the same
    /// Folders and files that their owner may not read get the right to be read.
    bool opensUp = false;
};

/// All that stands in a folder. Links are listed, and what a known one leads to as well, under the
/// link's name. One that leads nowhere holds nothing.
Result<StandingTree> TreeOf(const Path& folder, const KnownLinks& known,
                            const Heartbeat& heartbeat = {});

/// The files of a tree by their names.
using StandingFiles = std::unordered_map<std::string, const StandingFile*>;
StandingFiles FilesByName(const StandingTree& tree);

/// A name that no listing shows.
bool IsUnlisted(const Path& name);

/// Nobody has written to the file since.
bool IsUntouched(const StandingFile& before, const StandingFile& now);

} // namespace kestrova
