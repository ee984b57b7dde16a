#pragma once

#include "core/result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What tools print of a disc's files, and the forms in which a person gets it.
namespace kestrova
{

struct DiscEntry {
    std::string path; ///< from the root, with "/" in front
    bool isFolder = false;
    std::uint64_t size = 0;
    int day = 0;
    int month = 0; ///< 1 to 12
    int year = 0;

    bool operator==(const DiscEntry&) const = default;
};

/// `isoinfo -J -f`: a path a line, letters of Latin-1. Which of them are folders it does not say.
std::vector<std::string> ParseIsoinfoPaths(std::string_view text);
/// `isoinfo -J -l`, blocks of
///
///     Directory listing of /folder/
///     d---------   0    0    0            2048 Nov 22 2026 [     35 02]  .
///     ----------   0    0    0           50000 Nov 21 2026 [     34 00]  alpha.bin
///
/// each with a blank behind the name. The failure tells of a month that is none. Other lines are
/// passed over.
Result<std::vector<DiscEntry>> ParseIsoinfoListing(std::string_view text);
/// `xorriso -find / -exec lsdl --`:
///
///     -r--r--r--    1 0        0               2 Nov 22 20:31 '/K/it'"'"'s.txt'
///     dr-xr-xr-x    1 0        0               0 Jan  9  2024 '/K'
///
/// The time of day stands where the year is this one or the last: `thisYear` and `thisMonth` tell
/// which. The root itself is left out.
Result<std::vector<DiscEntry>> ParseXorrisoListing(std::string_view text, int thisYear,
                                                   int thisMonth);

/// A path a line.
std::string FlatListOf(const std::vector<DiscEntry>& files);
/// The last part of each path, two blanks in for each folder above it; folders come before files,
/// each with a "/" behind its name.
std::string TreeListOf(const std::vector<DiscEntry>& files);
/// Path, size and date (`dd/mm/yyyy`) with tabs between them; `--` for what a folder has not.
std::string ReferenceListOf(const std::vector<DiscEntry>& files);
/// `dd/mm/yyyy`.
std::string DayText(int day, int month, int year);

} // namespace kestrova
