#pragma once

#include <cstdint>

namespace kestrova
{

/// Numbers that are the same on every machine and in every run for the same seed.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next()
    {
        std::uint64_t mixed = state_ += UINT64_C(0x9E3779B97F4A7C15);
        mixed = (mixed ^ (mixed >> 30)) * UINT64_C(0xBF58476D1CE4E5B9);
        mixed = (mixed ^ (mixed >> 27)) * UINT64_C(0x94D049BB133111EB);
        return mixed ^ (mixed >> 31);
    }
    /// From 0 to `end` - 1.
    unsigned Below(unsigned end) { return static_cast<unsigned>((Next() >> 32) * end >> 32); }
    /// From 0 to below 1.
    double Part() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

private:
    std::uint64_t state_;
};

} // namespace kestrova
