#pragma once

#include "audio/wave_header.h"

#include <functional>

namespace kestrova
{

/// A form that waves are written in.
struct WaveForm {
    int rate = 44100;
    int channels = 2;
    bool adpcm = false; ///< 4-bit ADPCM; otherwise 16-bit PCM
};
/// The target of a mode from 1 to 4.
WaveForm FormOfMode(int mode);

/// Called between pieces of a file with the frames done and in all; False stops it with `Stopped`.
using ConvertProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

/// Converts a wave by one of the four modes. Resampled where the rates differ; a sound that would
/// go beyond full loudness is turned down as a whole. `destination` is written whole or not at all,
/// and only when it was opened again and holds as many samples as it must. The failure's reason is
/// in words.
Status WavConverter(const Path& source, const Path& destination, int mode,
                    const ConvertProgress& progress = {});

/// True when the file is a wave of that form and holds that many samples of a channel.
bool HoldsWave(const Path& file, const WaveForm& form, std::uint64_t frames);

} // namespace kestrova
