#pragma once

#include "session/host.h"

namespace kestrova
{

/// Shows a failure in words: `text`, beside it the failure's own sentence or else its subject, and
/// the system's reason, and its details.
void TellFailure(Host& host, const std::string& text, const Failure& failure);
/// The same by the failure's own sentence. A Stop without one is not told: who pressed it knows.
void TellFailure(Host& host, const Failure& failure);
/// Tells why a thing is not done. Answers False, so that a condition can end with it.
bool Refuse(Host& host, const std::string& words);
/// True when it is done. A failure is told, by its own sentence.
bool DoneOrTold(Host& host, const Status& status);
/// The failure of a folder that could not be listed, in words: nothing was decided on it.
Failure FolderNotRead(Failure failure);
/// Tells that a folder could not be listed, and that nothing was decided on it. Answers False.
bool TellFolderNotRead(Host& host, const Failure& failure);
/// True unless the person says that the old file must stay.
bool ConfirmReplace(Host& host, const Path& newFile, const Path& oldFile);

} // namespace kestrova
