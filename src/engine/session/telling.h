#pragma once

#include "session/host.h"

namespace kestrova
{

/// Shows a failure in words: `text`, and the failure's subject and system reason beside it.
void TellFailure(Host& host, const std::string& text, const Failure& failure);
/// Tells that a folder could not be listed, and that nothing was decided on it. Answers False.
bool TellFolderNotRead(Host& host, const Failure& failure);
/// True unless the person says that the old file must stay.
bool ConfirmReplace(Host& host, const Path& newFile, const Path& oldFile);

} // namespace kestrova
