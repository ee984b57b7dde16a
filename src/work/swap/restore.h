#pragma once

#include "session/session.h"

namespace kestrova
{

/// The full restore: the ordinary removal, then all critical files from the backup. It needs
/// neither the archive nor a whole Level Editor's folder. True when every original is back; what is
/// missing has been told otherwise, and running it again goes on where it stopped.
bool RestoreOriginalConfiguration(Session& session, ProgressScope& progress);
/// `Pul_Fast`'s words around `RestoreFast`; True when the dialog may close.
bool RestoreFastWithWords(Session& session);

} // namespace kestrova
