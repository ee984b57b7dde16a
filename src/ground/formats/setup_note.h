#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What a setup of the Level Editor notes before it puts the folder into its place, so that one
/// that was killed can go on: lines, each ended by LF.
///
///     1  the folder's path; no line end is in it
///     2  the word of the language
///     3  device and inode of the folder, decimal, one blank between
namespace kestrova
{

struct SetupNote {
    std::string target;
    std::string language;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    bool operator==(const SetupNote&) const = default;
};

std::string FormatSetupNote(const SetupNote& note);
/// None for what is no whole note.
std::optional<SetupNote> ParseSetupNote(std::string_view text);

} // namespace kestrova
