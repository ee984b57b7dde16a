#pragma once

#include "formats/disc_note.h"
#include "formats/record_json.h"

/// Files of a folder by name, size and content, in notes that tell whether they are still as they
/// were: a list of `{"name":"data/level1.tr4","size":4711,"hash":"HASH"}`.
namespace kestrova
{

NoteJson JsonOf(const std::vector<NotedFile>& files);
/// Reads the member `files`. False when one of them could lead to another place.
bool ReadNotedFiles(NoteReader& reader, std::vector<NotedFile>& files);

} // namespace kestrova
