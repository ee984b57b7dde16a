#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What is noted of a disc's file whose content is seen in a folder, so that whoever comes later
/// knows what was made there: texts, each ended by NUL.
///
///     1  `fuse`, `loop` or `copy`
///     2  the folder
///     3  the loop device of `loop`, otherwise nothing
///     4  the file
///     5  size and time of the file; for a copy device, inode and hash of the folder as well: five
///        texts, decimal but for the hash
namespace kestrova
{

struct SeenNote {
    enum class Way {
        Fuse, ///< mounted by the program's own right
        Loop, ///< mounted by the desktop
        Copy, ///< taken out
    };
    Way way = Way::Copy;
    std::string folder;
    std::string loop;
    std::string image;
    std::uint64_t imageSize = 0;
    std::int64_t imageTime = 0; ///< nanoseconds since 1970
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::string hash; ///< of the names, sizes and times below the folder
    bool operator==(const SeenNote&) const = default;
};

std::string FormatSeenNote(const SeenNote& note);
/// None for what is no whole note.
std::optional<SeenNote> ParseSeenNote(std::string_view text);

} // namespace kestrova
