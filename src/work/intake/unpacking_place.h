#pragma once

#include "session/folders.h"

namespace kestrova
{

/// Where packages are unpacked before their files go on; empty of meaning between two runs.
Path UnpackingFolder(const Folders& folders);

} // namespace kestrova
