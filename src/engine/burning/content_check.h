#pragma once

#include "burning/burn_settings.h"
#include "core/result.h"
#include "formats/iso_directory.h"
#include "platform/open_file.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kestrova
{

/// A file of a disc that equals its source, byte by byte.
struct SameFile {
    std::string target; ///< its place on the disc, parted by "/"
    Path source;
    std::uint64_t size = 0;
    std::string hash; ///< XXH3 with 128 bits, as `platform::HashOf` gives it
};

struct DiscComparison {
    std::vector<SameFile> same{};
    std::vector<std::string> differences{}; ///< a sentence each, for a person
};

/// Reads each file of the items back from the image or device, at the place that the disc's own
/// directory tells, and compares it with its source. Nothing is mounted and no tool runs.
/// `Differs`, with the first of the differences as its sentence and all of them as details, when
/// one file is missing, cannot be read or is another; `Damaged` when it is no disc; `Stopped`.
Status CompareWithSources(const Path& imageOrDevice, const std::vector<BurnItem>& items,
                          const std::vector<Path>& noItems, ProgressScope* progress,
                          DiscComparison& comparison);

/// Opens an image or device and reads the disc's own directory. `Damaged` too for an image that is
/// shorter than it says.
Status OpenDisc(const Path& imageOrDevice, platform::File& disc, IsoDirectory& directory);

} // namespace kestrova
