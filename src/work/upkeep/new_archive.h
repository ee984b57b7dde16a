#pragma once

#include "session/session.h"

namespace kestrova
{

/// A new archive with the original configuration alone; asks for its folder. `folder` and `file`
/// replace chooser and default name when they are not empty. When it ends early, memory holds the
/// new list, which belongs to no file; the old one's file is untouched, and the next start loads
/// it.
bool CreateArchive(Session& session, const Path& folder = {}, const Path& file = {});
/// `LevelArchive.kva`, `LevelArchive2.kva` … of the program's folder: the first that is free; empty
/// when 100 are taken.
Path DefaultArchivePath(const Folders& folders);
/// `LevelFolder`, `LevelFolder2` … below `parent`.
Path DefaultArchiveFolder(const Path& parent);

/// A record's folder field holds 256 bytes; what grows from the archive's folder needs the rest.
inline constexpr std::size_t longestArchiveFolder = 220;
/// False, with a message, for a folder that is too long for an archive.
bool FitsArchive(Host& host, const Path& folder);
/// The same, and for one in which levels would not be safe.
bool MayBecomeArchive(Host& host, const Folders& folders, const Path& folder);

/// The record of the original configuration, as a new archive has it.
LevelRecord OriginalLevel(const Folders& folders);

} // namespace kestrova
