#pragma once

#include "session/host.h"

/// Where a package is unpacked before its files are moved in: a folder inside the one that they are
/// meant for.
namespace kestrova
{

/// True for a folder that holds nothing, or an empty place to unpack in that was kept: to remove
/// folders costs the disk more than a small package does.
bool IsReadyToUnpack(const Path& folder);

/// The place inside `folder`; nothing is in it.
Result<Path> EmptyStaging(const Path& folder);

/// Removes it, unless it is to be kept and empty. What cannot go is cleared by the next package.
void DropStaging(const Path& staging, bool keep, ProgressScope* progress);

/// What is neither a file nor a folder, by its place below `top`.
std::vector<std::string> NotFilesBelow(const Path& top);

} // namespace kestrova
