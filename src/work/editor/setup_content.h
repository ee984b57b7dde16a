#pragma once

#include "audio/wave_header.h"
#include "editor/setup_parts.h"

/// What a setup makes of the Level Editor's files, in a tree that is its own. Each failure has a
/// sentence of its own where there is one that says more than the system's reason.
namespace kestrova
{

/// Every file and folder may be changed by its owner.
Status AllowWriting(const SetupParts& parts, const Path& tree);
/// The Level Editor's own programs may be started: a package's files come out without that right.
Status AllowStarting(const Path& tree);

/// The language's load screen becomes `load.bmp`; then the pictures of other languages go.
Status MakeLoadScreen(const Path& tree, const SetupLanguage& language);
Status RemoveOtherScreens(const Path& tree, const SetupLanguage& language);
Status RemoveOtherManuals(const Path& tree, const SetupLanguage& language);
/// What the script compiler's folder has of it comes to the root.
Status CopyLanguageFile(const Path& tree, const SetupLanguage& language);
Status CopyScript(const Path& tree);

/// The folder's mp3 files become waves of that kind, and go.
Status DecodeMusic(const SetupParts& parts, const Path& folder, AudioKind kind, Message label);

/// The tom files that the tree brings.
Result<std::vector<Path>> TomFilesOf(const Path& tree);
Status CompileTomOf(const SetupParts& parts, const Path& tree, const Path& tom);

} // namespace kestrova
