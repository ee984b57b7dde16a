#pragma once

namespace kestrova::platform
{

/// From now on a signal that asks the program to end (SIGTERM, SIGINT, SIGHUP) makes the descriptor
/// readable, once; a second one ends the program as ever. One that whoever started the program had
/// set aside stays so. -1 where the system gives no descriptor: then nothing has changed.
int NoteEndSignals();

/// Ends the program in the way that the signal which came would have ended it.
void EndBySignal();

} // namespace kestrova::platform
