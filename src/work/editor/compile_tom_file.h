#pragma once

#include "editor/tom_compile.h"
#include "session/session.h"

namespace kestrova
{

/// What of the session a compilation needs, as it is now.
CompileParts CompilePartsOf(Session& session, ProgressScope& progress);

/// True when the Level Editor's folder may be lent now: nothing waits to be mended, and no program
/// runs there that the person wants to go on. Told when it is not.
bool MayLend(Session& session);

/// Compiles one tom file with its own wad set and the samples beside it, in the Level Editor's
/// folder, which comes back as it was. `result` gets the file, which lies beside the tom file; one
/// that is there is replaced only when the person says so. The sources stay. False, with words.
bool CompileTomFile(Session& session, const Path& tom, Path& result);

} // namespace kestrova
