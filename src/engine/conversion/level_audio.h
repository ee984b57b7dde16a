#pragma once

#include "conversion/audio_batch.h"
#include "session/archive.h"

/// What a level's folder wants done to its sounds.
namespace kestrova
{

/// The mp3 files among `files`, which lie in `folder`, become the waves that the game reads: those
/// with a number as their name (tracks of the `audio` folder) in 4-bit ADPCM, all others (samples)
/// in 22050 Hz mono. Nothing is done unless the archive keeps waves as mp3 or `force` says so. With
/// `samplesOnly` the tracks stay. Decoded files go; one that the person passed over stays. The
/// caller lists the folder again.
Status DecodeLevelMp3(Host& host, const SoundConverter& converter, const Archive& archive,
                      const Path& folder, const std::vector<Path>& files, bool force,
                      bool samplesOnly);

} // namespace kestrova
