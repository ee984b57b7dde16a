#pragma once

#include "session/session.h"

/// Where the levels of a person who starts for the first time may lie.
namespace kestrova
{

/// As a person types it, with a tilde for the home folder.
Path PlaceFrom(const std::string& typed);
/// Whether that is an archive's file, by its name, and no folder.
bool NamesArchive(const Path& place);
/// An archive in that folder, or one of the program's folder whose levels lie there; empty: none.
Path ArchiveAt(const Session& session, const Path& folder);
/// An archive of an earlier time whose preferences were lost, or else a new folder.
Path ProposedLevels(const Session& session);

} // namespace kestrova
