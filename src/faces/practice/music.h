#pragma once

#include <cstdint>
#include <string>

namespace kestrova
{

/// A tune of plucked notes as a 44,100 Hz stereo wave in 4-bit ADPCM; another seed, another tune.
/// A long one plays its phrase of some eight seconds again and again.
std::string TuneWave(std::uint64_t seed, double seconds);

} // namespace kestrova
