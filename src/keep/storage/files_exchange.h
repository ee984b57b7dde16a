#pragma once

#include "core/files.h"
#include "words/message.h"

namespace kestrova
{

/// `files.new`, `files.old`: what stands beside a level's `files` while it is exchanged.
Path BesideFiles(const Path& files, std::string_view ending);
/// Ends an exchange that was killed on a disk without a one-step exchange, and clears what it left.
Status FinishExchange(const Path& files);
/// Puts `files.new` in place of `files`; what lay in `files` is removed, its sub-folders are
/// carried over. At any moment `files` is the old folder or the new one, on a disk that cannot
/// exchange names at least one of `files` and `files.old` is there.
Status ExchangeFiles(const Path& files);

} // namespace kestrova
