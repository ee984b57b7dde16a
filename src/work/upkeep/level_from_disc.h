#pragma once

#include "core/files.h"
#include "formats/disc_note.h"

namespace kestrova
{

/// Copies the `files` folder of a level from its disc: writable, each file compared with the disc,
/// and with its noted content where `noted` is not null. A file that is there already with the same
/// content is left alone; one with another content is taken out of the level's files and named in
/// `replaced`. `Damaged` when the disc does not hold what is noted: the file is the subject.
/// Durable only when the file system is flushed. `copied` is called with the bytes of the level so
/// far; False stops.
Status CopyLevelFromDisc(const Path& disc, const Path& files, const NotedLevel* noted,
                         const std::function<bool(std::uint64_t)>& copied,
                         std::vector<Path>& replaced);

} // namespace kestrova
