#pragma once

#include "session/host.h"
#include "session/machine.h"

/// Files that came with a level, before they are handed to the desktop.
namespace kestrova
{

/// True for a file that is there to be read or looked at, by its name: text, pages, pictures. A
/// link is none, since what it leads to may be anything.
bool IsDocument(const Path& file);

/// Opens a file of a level with the desktop's program. What is no document may be started there as
/// a program, so the person is asked first, by the file's name; `Stopped` when that was refused.
Status OpenOfLevel(Host& host, Machine& machine, const Path& file);

} // namespace kestrova
