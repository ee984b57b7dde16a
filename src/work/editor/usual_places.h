#pragma once

#include "session/folders.h"

#include <vector>

namespace kestrova
{

/// The whole Level Editor's folders that are known here without a question: what the registries of
/// Wine's prefixes name, and what lies where one is usually put, in the prefixes and in the
/// person's own folders. Each once, what a registry names first.
std::vector<Path> FoundEditors(const Folders& folders);

} // namespace kestrova
