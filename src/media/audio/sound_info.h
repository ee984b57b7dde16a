#pragma once

#include "core/files.h"

namespace kestrova
{

/// What a sound file holds, read from its chunks or frames.
struct SoundInfo {
    std::string form{}; ///< `mp3`, or the words that classify a wave
    std::uint32_t rate = 0;
    int channels = 0;
    int bits = 0;  ///< of a wave's samples as they are stored
    int kbits = 0; ///< of an mp3: the mean, kbit/s
    std::uint64_t frames = 0;
    double seconds = 0;
    std::uint64_t bytes = 0;
};

/// `Damaged` for what is neither, and for a header of what no sound has, with words for that.
Result<SoundInfo> LookAtSound(const Path& file);

} // namespace kestrova
