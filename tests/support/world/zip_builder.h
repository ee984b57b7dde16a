#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrova::testing
{

/// One entry of a zip that no tool would make: whatever a person may find in a downloaded one.
struct BuiltEntry {
    std::string name; ///< bytes
    std::string content;
    std::uint16_t madeBy = 0x0314; ///< 3: Unix; 0x0014: DOS
    std::uint16_t flags = 0;       ///< 0x800: the name is UTF-8
    std::uint32_t mode = 0100644;  ///< of Unix
    bool deflated = false;
    std::optional<std::uint32_t> claimedSize{}; ///< what the directory says instead of the truth
    std::uint32_t dosAttributes = 0;            ///< 0x10: a folder
    std::uint16_t method = 0;                   ///< with `packed`: how that is packed
    std::optional<std::string> packed{};        ///< what stands in the zip for the content
};

inline constexpr std::uint16_t madeByDos = 0x0014;

/// `comment`: of the archive, up to 65,535 bytes.
std::string BuildZip(const std::vector<BuiltEntry>& entries, const std::string& comment = {});

} // namespace kestrova::testing
