#pragma once

#include "archive/archive_parts.h"

namespace kestrova
{

/// Copies the documents of the levels on discs to their folders on the hard disk. A document that
/// cannot be copied is named, and the others follow. False when one was left out, or no archive is
/// loaded.
bool CopyMoreInfoFiles(const ArchiveParts& parts);

} // namespace kestrova
