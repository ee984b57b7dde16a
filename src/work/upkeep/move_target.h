#pragma once

#include "session/session.h"

#include <optional>

/// Where an archive can go.
namespace kestrova
{

/// True for a folder, existing or not, that can take an archive which lies in `from` and needs so
/// many bytes there. False, with words. Nothing is made.
bool FitsForArchive(Host& host, Machine& machine, const Path& from, const Path& to, double bytes);
/// `said`, or else the folder that the person chooses, until one fits. No value when the person
/// gives up, or when `said` does not fit.
std::optional<Path> ChooseTarget(Host& host, Machine& machine, const Path& from, const Path& said,
                                 double bytes);
/// False, with words, when so many bytes have no room there.
bool HasRoomFor(Host& host, Machine& machine, const Path& folder, double bytes);

} // namespace kestrova
