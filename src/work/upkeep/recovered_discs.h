#pragma once

#include "session/archive.h"
#include "session/host.h"
#include "session/machine.h"
#include "tools/tools.h"

#include <functional>

namespace kestrova
{

/// A disc of an archive as a folder: `…/MyLevels2`.
struct DiscFolder {
    std::int32_t number = 0;
    Path folder;
};
/// The archive's discs that a place holds: such a folder itself, a folder in which they lie, or an
/// image. Told, and empty, when it holds none.
std::vector<DiscFolder> DiscsAt(Host& host, Machine& machine, const Tools& tools,
                                const Path& place);
/// Asks for one disc after the other. No value when the person names a first one that is none.
std::optional<std::vector<DiscFolder>> AskForDiscs(Host& host);

/// The archive learns which of its levels lie on that disc; levels that only lie there come onto
/// the list, filled by `fill`.
using FillLevel = std::function<void(LevelRecord&, const Path& files)>;
Status TakeDisc(Archive& archive, const DiscFolder& disc, const FillLevel& fill);
/// The same by the note of its discs, for levels that have no files here.
void TakeNotedDiscs(Archive& archive, const Path& levels);

} // namespace kestrova
