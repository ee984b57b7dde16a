#pragma once

#include "words/message.h"

#include <cstdint>
#include <span>
#include <string_view>

/// How much goes onto a disc.
namespace kestrova
{

/// A kind of disc that a person can choose.
struct DiscCapacity {
    Message text;
    int megabytes = 0;        ///< of 1048576 bytes; what is counted with
    std::uint64_t medium = 0; ///< bytes that such a disc really takes
};
/// Compact discs, DVD, blu-ray.
std::span<const DiscCapacity> DiscCapacities();
/// The row with that number of megabytes, or one of its own for a number that a person gave: it
/// takes what it says.
DiscCapacity CapacityOf(int megabytes);

/// The smallest and the largest number that a person may give.
inline constexpr int fewestDiscMegabytes = 10;
inline constexpr int mostDiscMegabytes = 128 * 1024;

/// What a disc takes up beside the bytes of its files: each file ends with its sector, each folder
/// has records in three name trees. Counted too high rather than too low.
class DiscRoom
{
public:
    /// The sectors of a file's content, and its records. `name`: its last part.
    void AddFile(std::string_view name, std::uint64_t size);
    void AddFolder(std::string_view name);
    [[nodiscard]] std::uint64_t Bytes() const { return bytes_; }

private:
    std::uint64_t bytes_ = 0;
};
/// Of a disc without any file: descriptors, path tables, padding.
inline constexpr std::uint64_t emptyDiscBytes = UINT64_C(1) << 20;

} // namespace kestrova
