#pragma once

#include "core/names.h"
#include "core/result.h"
#include "platform/files.h"

namespace kestrova
{

/// Says in a zip of UTF-8 names that they are UTF-8, which the tool that packs leaves out: bit 11
/// of the flags, in the directory's entry (byte 8) and in the header before the file (byte 6).
/// Names of plain letters, and such as are no UTF-8, stay as they are.
Status MarkUtf8Names(const Path& zip);

} // namespace kestrova
