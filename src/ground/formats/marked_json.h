#pragma once

#include "formats/marked_level.h"
#include "formats/record_json.h"

/// The marks of levels in the note of a change: a list of
/// `{"code":12,"token":"HASH","before":{"stars":0},"after":{"stars":4}}`.
namespace kestrova
{

NoteJson JsonOf(const std::vector<MarkedLevel>& levels);
/// False for what `JsonOf` does not write.
bool ReadMarkedLevels(const NoteJson& list, std::vector<MarkedLevel>& levels);

} // namespace kestrova
