#pragma once

#include "session/machine.h"
#include "storage/storage.h"

namespace kestrova
{

/// Waves of a level on their way into the archive as mp3.

/// Puts mp3 files, made in `work`, in place of the waves of the list. The sources stay as they are.
/// `NotDone` when it failed and the loss is not accepted; where it is, the waves that were not
/// converted are left behind.
Status EncodeWaves(Host& host, const SoundConverter& converter, std::vector<LevelFile>& files,
                   const Path& work, const AcceptLoss& accept);

/// The waves of a folder become mp3 where they lie. The same question; then the waves go, converted
/// or not, as the answer accepts.
Status EncodeWavesInPlace(Host& host, const SoundConverter& converter, const Path& folder,
                          const AcceptLoss& accept);

/// Sounds that cannot be converted refuse the whole folder, or stay as they are.
enum class UnfitSounds { Refuse, Stay };

/// Stored sounds change form: the folder's waves become mp3, or its mp3 files waves of the game's
/// form, deflated ones too, which come back expanded. An original goes when the new file lies
/// beside it and was read back. A file that the person passed over stays. The failure of the
/// conversion itself (`Stopped`, `Refused`, `NotDone`) was seen in its window.
Status ChangeStoredAudio(Host& host, Machine& machine, const SoundConverter& converter,
                         const Path& folder, bool toMp3, UnfitSounds unfit = UnfitSounds::Refuse);

} // namespace kestrova
