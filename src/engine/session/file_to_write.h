#pragma once

#include "session/host.h"

namespace kestrova
{

/// The file that a name of the person's leads to: itself, or what a link of that name stands for.
/// `Refused` where something stands that is no file, which nothing may be written over.
Result<Path> FileToWrite(const Path& named);
/// The same, when it is free or the person says that the old file may go; otherwise `Stopped`.
Result<Path> FileToReplace(Host& host, const Path& named);

} // namespace kestrova
