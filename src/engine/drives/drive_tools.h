#pragma once

#include "tools/tool.h"

namespace kestrova
{

/// Mounts the file of a disc; Joliet and Rock Ridge names. It goes on by itself once it is there.
const Tool& FuseIso();
/// Ends what `FuseIso` mounted.
const Tool& FuseUnmount();
/// The desktop's way to mount, to end that, and to make a device of a file.
const Tool& UdisksControl();
/// Takes the files out of a disc's file.
const Tool& XorrisoExtract();

} // namespace kestrova
