#pragma once

#include "core/files.h"

#include <cstdint>

/// The first 36 bytes of a wave as one record, little-endian, its tags not looked at:
///
///      0  4  ChunkId        16  4  FormatSize      28  4  ByteRate
///      4  4  ChunkSize      20  2  FormatTag       32  2  BlockAlign
///      8  8  FormatId       22  2  Channels        34  2  BitsPerSample
///                           24  4  SampleRate
namespace kestrova
{

struct WavHeader {
    std::string chunkId{};
    std::int32_t chunkSize = 0;
    std::string formatId{};
    std::int32_t formatSize = 0;
    std::int16_t formatTag = 0; ///< 1 is PCM
    std::int16_t channels = 0;
    std::int32_t sampleRate = 0; ///< Hz
    std::int32_t byteRate = 0;
    std::int16_t blockAlign = 0;
    std::int16_t bitsPerSample = 0; ///< 4 for the game's ADPCM
};

/// What lies behind the end of a shorter file counts as zeros.
WavHeader ParseWavHeader(std::string_view bytes);

/// True when the file is standard: PCM with 16 bits, 44100 Hz, 2 channels. False for any other file
/// and for one that cannot be read.
bool ReadWavHeader(const Path& file, WavHeader& header);

/// What a sound file is, and what it can be turned into.
enum class AudioKind {
    Standard = 1, ///< 44100 Hz, 2 channels, 16 bits
    Adpcm = 2,    ///< 44100 Hz, 2 channels, 4 bits: the game's form
    Mono = 3,     ///< 22050 Hz, 1 channel, 16 bits
    OtherPcm = 4,
    Mp3 = 5, ///< only to turn into
    Unknown = 6,
};

/// What `WavConverter` is asked for; two more numbers stand beside them in lists of steps.
enum WaveMode : int {
    decodeStep = 0,
    adpcmToStandard = 1,
    toAdpcm = 2,
    pcmToStandard = 3,
    toMono = 4,
    encodeStep = 5,
};

struct WaveClass {
    /// The way to the target: a `WaveMode`, 0 when it is the target already, -1 when there is none.
    int mode = -1;
    std::string description{}; ///< `PCM 44100Hz stereo 16 bits`
    AudioKind kind = AudioKind::Unknown;
    WavHeader header{};
};

WaveClass ClassifyWav(const WavHeader& header, AudioKind target);
WaveClass ClassifyWav(const Path& file, AudioKind target);

} // namespace kestrova
