#pragma once

#include "core/files.h"

#include <optional>

/// Which wads a readme tells to use for which tom file. A name of each, near each other, is taken
/// for a link.
namespace kestrova
{

/// For each stem of a tom file the number of its wad among `wads`, which are names of files; no
/// value where the text tells none. A tom file's name counts with its dot; the first place of it
/// decides that has a wad's name with its dot in the 80 letters that begin 40 before it. Of several
/// wads there the one with the longest prefix in common wins, and of those the first one. Letters
/// of any case are the same. The time is that of the text's length, whatever it holds.
Result<std::vector<std::optional<std::size_t>>> FindLinks(std::string_view text,
                                                          const std::vector<std::string>& tomStems,
                                                          const std::vector<std::string>& wads,
                                                          const Heartbeat& heartbeat = {});

} // namespace kestrova
