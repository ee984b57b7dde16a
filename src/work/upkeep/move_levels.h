#pragma once

#include "archive/archive_parts.h"
#include "core/whole_tree.h"

namespace kestrova
{

/// All that belongs to the archive in its folder. `Stopped` by the person.
Result<WholeTree> ScanArchiveFolder(Host& host, const Path& folder);
/// Moves the loaded archive's folder, of which the tree was scanned, to one that fits. The list is
/// written when all is copied, compared and flushed; only then the old folders go. False, with
/// words, when the archive is where it was, or where its move could not be ended; a Stop is not
/// told. A killed move is ended at the next start.
bool MoveLevels(const ArchiveParts& parts, const WholeTree& tree, const Path& to);

} // namespace kestrova
