#pragma once

#include "core/names.h"
#include "core/result.h"
#include "platform/file_facts.h"

/// What tells a level's folder from every other one, wherever its disk is mounted: a number that
/// lies in the folder and goes where it goes.
namespace kestrova
{

/// The token of a level's folder, made when it has none; with `flush` it is durable then.
Result<std::string> TokenOfLevel(const Path& home, bool flush = true);
/// The token that the folder has; empty without one. A failure while that cannot be told.
Result<std::string> KnownTokenOfLevel(const Path& home);

/// A token that no other folder has: of where and what the folder is, and of when.
std::string NewToken(const Path& folder, const platform::FileFacts& facts);

} // namespace kestrova
