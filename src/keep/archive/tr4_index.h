#pragma once

#include "formats/tr4_inf.h"
#include "session/archive.h"
#include "session/folders.h"

namespace kestrova
{

/// Name (cut to 80 characters), date and size of each `*.tr4` of a folder.
Result<std::vector<Tr4Entry>> ScanTr4Files(const Path& folder);
/// The entry of a file that is called `name` in its level.
Tr4Entry Tr4EntryOf(const std::string& name, const Path& file);
Path Tr4InfPath(const Folders& folders, const Archive& archive, std::size_t index);
/// For a level whose record is not in the archive yet.
Status WriteTr4InfOf(const Folders& folders, LevelCode code, const std::vector<Tr4Entry>& entries);
Status WriteTr4Inf(const Folders& folders, const Archive& archive, std::size_t index,
                   const std::vector<Tr4Entry>& entries);
Result<std::vector<Tr4Entry>> ReadTr4InfOf(const Folders& folders, LevelCode code);
Result<std::vector<Tr4Entry>> ReadTr4Inf(const Folders& folders, const Archive& archive,
                                         std::size_t index);

} // namespace kestrova
