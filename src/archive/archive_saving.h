#pragma once

#include "session/session.h"

namespace kestrova
{

/// Writes header and levels as they stand in memory; without a message. The file becomes the
/// session's archive. `Refused` for a folder that its field cannot hold.
Status WriteArchive(Session& session, const Path& file);
/// What every change of the archive ends with: writes at once with `AutoSave`, marks the archive
/// dirty without it. Shows its failure.
void SaveArchive(Session& session);
/// Saves or drops changes before something replaces the archive.
void AskSaveChanges(Session& session);

enum class ArchiveFolder { Main, Secondary };
/// Under what name the settings keep an archive's folder that the code page cannot hold.
std::string ExactFolderField(ArchiveFolder folder, const Path& file);

} // namespace kestrova
