#include "discs/disc_capacity.h"

#include "formats/sectors.h"
#include "words/disc_creation.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::uint64_t megabyte = 1048576;

/// A DVD is sold by millions of bytes and takes fewer than its name's megabytes; of a blu-ray disc
/// a formatted one counts, which keeps spare sectors.
constexpr DiscCapacity capacities[] = {{Msg::Capacity650, 650, 333'000 * discSector},
                                       {Msg::Capacity700, 700, 359'847 * discSector},
                                       {Msg::Capacity4700, 4700, 2'295'104 * discSector},
                                       {Msg::Capacity25, 23098, 23098 * megabyte}};

/// A record of the plain tree, one of the tree of long names, and what the system's own names and
/// rights take. A record never goes across a sector's end, which loses some of it.
constexpr std::uint64_t recordBytes = 420;
constexpr std::uint64_t bytesOfLetter = 4;

} // namespace

std::span<const DiscCapacity> DiscCapacities()
{
    return capacities;
}

DiscCapacity CapacityOf(int megabytes)
{
    const auto* const row =
        std::find_if(std::begin(capacities), std::end(capacities),
                     [&](const DiscCapacity& known) { return known.megabytes == megabytes; });
    return row != std::end(capacities)
               ? *row
               : DiscCapacity{{}, megabytes, static_cast<std::uint64_t>(megabytes) * megabyte};
}

void DiscRoom::AddFile(std::string_view name, std::uint64_t size)
{
    bytes_ += WholeSectors(size) + recordBytes + bytesOfLetter * name.size();
}

void DiscRoom::AddFolder(std::string_view name)
{
    // Its own records stand in sectors of their own in both trees, and in four path tables.
    bytes_ += 3 * discSector + recordBytes + 4 * bytesOfLetter * name.size();
}

} // namespace kestrova
