#pragma once

#include "session/session.h"

namespace kestrova
{

/// A record's folder field holds 256 bytes; what grows from the archive's folder needs the rest.
inline constexpr std::size_t longestArchiveFolder = 220;

/// False, with a message, for a folder that is too long for an archive.
bool FitsArchive(Session& session, const Path& folder);

} // namespace kestrova
