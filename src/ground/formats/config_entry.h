#pragma once

#include "core/names.h"
#include "core/result.h"
#include "formats/url_list.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The text of a record of kind 8: which level its configuration file belongs to, and the files by
/// which that level is known.
///
///     Name of level - data\level.tr4;1234567;script.dat;4096
///
/// Neither the name nor a file's may hold a "-": what stands behind a second one does not count.
namespace kestrova
{

struct ConfigEntryFile {
    /// Below the level's folder; empty for a name that leads out of it, or is none.
    Path relative;
    /// In bytes; nothing for a size that is no number.
    std::optional<std::uint64_t> size;
    bool operator==(const ConfigEntryFile&) const = default;
};

struct ConfigEntry {
    std::string level;
    std::vector<ConfigEntryFile> files; ///< none: the entry knows every level
    bool operator==(const ConfigEntry&) const = default;
};

/// No value for a text without "-".
std::optional<ConfigEntry> ParseConfigEntry(std::string_view description);

/// Tells the size of a file below the level's folder; nothing when it is not there.
using SizeOfFile = std::function<std::optional<std::uint64_t>(const Path& relative)>;
/// True when each of the entry's files is there with exactly its size.
bool Matches(const ConfigEntry& entry, const SizeOfFile& sizeOf);

/// The text of an entry. `Refused`, with the name as its subject, for one that the text cannot
/// hold; so is an entry without files, since it would be offered for every level.
Result<std::string> FormatConfigEntry(const ConfigEntry& entry);

} // namespace kestrova
