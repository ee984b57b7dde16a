#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// A drive that a setting names: its disc is a file, which is seen in a folder. One line of the
/// settings:
///
///     NAME=MEDIUM|FOLDER|CAPACITY|RIGHTS
///
/// MEDIUM is the file that lies in the drive at first, empty for none; CAPACITY counts megabytes of
/// 1,048,576 bytes, empty for as much as there is room; RIGHTS is `writes` where the drive writes.
/// What stands behind FOLDER may be missing. `%HH` stands for a byte of a path that no line can
/// hold. Relative paths count from the program's folder.
namespace kestrova
{

struct DriveSetting {
    std::string name;
    std::string medium;          ///< a path, empty for none
    std::string folder;          ///< a path
    std::uint64_t megabytes = 0; ///< 0: no bound
    bool writes = false;
    bool operator==(const DriveSetting&) const = default;
};

/// So many drives may be named.
inline constexpr std::size_t mostDriveSettings = 16;

/// True for a name that a drive may have: letters, digits, `-`, `_` and `.` of 7 bits, up to 32,
/// the first a letter or a digit.
bool IsDriveName(std::string_view name);
/// The part behind the equals sign.
std::string FormatDriveSetting(const DriveSetting& drive);
/// None for what names no drive.
std::optional<DriveSetting> ParseDriveSetting(std::string_view name, std::string_view value);

} // namespace kestrova
