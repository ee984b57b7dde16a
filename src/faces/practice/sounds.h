#pragma once

#include <cstdint>
#include <string>

namespace kestrova
{

/// A sample as the compiler of levels takes it: 22,050 Hz mono in plain 16 bits; another seed,
/// another sound.
std::string SampleWave(std::uint64_t seed, double seconds);

/// So many frames of silence, 26 ms each, as an mp3 of 44,100 Hz mono.
std::string SilentMp3(unsigned frames);

} // namespace kestrova
