#pragma once

#include "session/session.h"

namespace kestrova
{

/// Brings the files of all levels back from the archive's discs to the hard disk: each file is
/// copied, compared with its disc and with what is noted of it, and flushed before the level counts
/// as being on the hard disk. `target`: the archive's folder moves there first; empty: it stays
/// where it is, unless it has no room and the person chooses another one. What was brought back
/// stays so after a Stop or a kill, and the next call goes on. False, with words, when levels stay
/// on their discs.
bool MoveArchiveToHd(Session& session, const Path& target = {});

} // namespace kestrova
