#pragma once

#include "session/session.h"

namespace kestrova
{

/// Writes header and levels as they stand in memory; without a message. The file becomes the
/// session's archive. `Refused` for a folder that its field cannot hold.
Status WriteArchive(Session& session, const Path& file);
/// What every change of the archive ends with: writes at once with `AutoSave`, marks the archive
/// dirty without it. False when a write failed, which it shows; the archive is dirty then.
bool SaveArchive(Session& session);
/// The command to save: writes whether or not anything changed. Shows its failure.
bool SaveArchiveNow(Session& session);
/// Saves or drops changes before something replaces the archive. True when the file holds all that
/// memory holds; False when changes were dropped, or a failed save was told.
bool AskSaveChanges(Session& session);

enum class ArchiveFolder { Main, Secondary };
/// Under what name the settings keep an archive's folder that the code page cannot hold.
std::string ExactFolderField(ArchiveFolder folder, const Path& file);

} // namespace kestrova
