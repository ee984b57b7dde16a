#pragma once

#include "archive/archive_parts.h"
#include "words/message.h"

/// Savegames from and to other folders. Each operation ends an interrupted move first, goes on past
/// a file that fails and answers with what failed.
namespace kestrova
{

struct FailedFile {
    Path file;
    Failure failure;
};
using FailedFiles = std::vector<FailedFile>;

/// Copies each file into the lowest free of the level's fifteen slots, without its note and
/// pictures.
FailedFiles CopyIntoSlots(const ArchiveParts& parts, LevelCode code,
                          const std::vector<Path>& files);

/// Copies each file under its own name into a folder, over what is there, without its note and
/// pictures. A savegame that is replaced there, and with `deleteSources` each one that goes, is in
/// the history beforehand. `replaced` gets the names of those with another content.
FailedFiles ExportSavegames(const ArchiveParts& parts, LevelCode code,
                            const std::vector<Path>& files, const Path& folder, bool deleteSources,
                            std::vector<std::string>* replaced = nullptr);

/// Says what failed; `text` has a place for the files' names. Nothing for an empty list.
void TellFailedFiles(Host& host, Message text, const FailedFiles& failed);

} // namespace kestrova
