#pragma once

#include "formats/stored_note.h"
#include "storage/storage.h"

namespace kestrova
{

/// Makes the stored form of one file anew, as `noted` tells it, from what it was made of then; the
/// file that it answers lies in `work`. Its bytes may be others than those that were noted, where
/// the library or the encoder is another one now.
Result<Path> MakeStoredForm(Host& host, const SoundConverter& converter, const StoredEntry& noted,
                            const Path& source, const Path& work);

} // namespace kestrova
