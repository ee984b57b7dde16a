#pragma once

#include "session/session.h"

namespace kestrova
{

/// Writes header and levels as they stand in memory; without a message. The file becomes the
/// session's archive.
Status WriteArchive(Session& session, const Path& file);
/// What every change of the archive ends with: writes at once with `AutoSave`, marks the archive
/// dirty without it. Shows its failure.
void SaveArchive(Session& session);
/// Saves or drops changes before something replaces the archive.
void AskSaveChanges(Session& session);

} // namespace kestrova
