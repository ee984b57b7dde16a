#pragma once

#include "words/message.h"

// clang-format off

/// Forms of sounds.
namespace kestrova::Msg
{

inline constexpr Message WavePcm{"PCM"};
inline constexpr Message WaveAdpcm{"ADPCM"};
inline constexpr Message WaveUnknown{"UNKNOWN"};
inline constexpr Message WaveMono{"mono"};
inline constexpr Message WaveStereo{"stereo"};
inline constexpr Message WaveDescription{"~1 ~2Hz ~3 ~4 bits"};
inline constexpr Message WaveNotReadable{"This is no wave file that can be read."};
inline constexpr Message WaveNotWritten{"The converted file could not be written."};
inline constexpr Message WaveBreaksOff{"The sound breaks off before the end that the file tells, so it was not converted."};
inline constexpr Message WaveTooLong{"The sound is too long for a wave file."};
inline constexpr Message WaveNotWhole{"The converted file was opened again and is not whole, so it was thrown away."};
inline constexpr Message SoundOfMpeg{"mpeg layer ~1"};
inline constexpr Message NoSuchSound{"The file is damaged: it tells of ~1 Hz, ~2 channels and ~3 bits, which no sound has."};

} // namespace kestrova::Msg
