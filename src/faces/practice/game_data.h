#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kestrova
{

/// `size` bytes that deflate about as well as a level does, to a half: pages of 16-bit texture
/// pixels, rows of records, and sound samples. They begin as a level file begins.
std::string MakeGameData(std::uint64_t seed, std::size_t size);

} // namespace kestrova
