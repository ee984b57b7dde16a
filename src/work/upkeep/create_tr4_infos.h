#pragma once

#include "session/session.h"

namespace kestrova
{

/// Writes the `tr4.inf` of every level that has none, from its files, however they are stored.
/// A level whose folder is gone, or whose files cannot be expanded, is named, and the others
/// follow. False then, and, at once, where a disc is missing or an index cannot be written.
bool CreateTr4Infos(Host& host, const Folders& folders, const Archive& archive);

} // namespace kestrova
