#pragma once

#include <cstdint>

namespace kestrova
{

/// What a disc is read and written by.
inline constexpr std::uint64_t discSector = 2048;

/// So many bytes as whole sectors take.
constexpr std::uint64_t WholeSectors(std::uint64_t bytes)
{
    return (bytes + discSector - 1) / discSector * discSector;
}

} // namespace kestrova
