#pragma once

#include "storage/storage.h"

namespace kestrova
{

/// Waves of a level on their way into the archive as mp3.

/// Puts mp3 files, made in `work`, in place of the waves of the list. The sources stay as they are.
/// False when it failed and the person does not want to go on; whoever does leaves the waves that
/// were not converted behind.
bool EncodeWaves(Session& session, std::vector<LevelFile>& files, const Path& work);

/// The waves of a folder become mp3 where they lie. The same question; then the waves go, converted
/// or not, as the answer accepts.
bool EncodeWavesInPlace(Session& session, const Path& folder);

/// Stored sounds change form: the folder's waves become mp3, or its mp3 files waves of the game's
/// form, deflated ones too, which come back expanded. An original goes when the new file lies
/// beside it and was read back. A file that the person passed over stays. False when nothing or not
/// all was changed.
bool ChangeStoredAudio(Session& session, const Path& folder, bool toMp3);

/// One level's stored sounds become what the archive wants now. A failure is asked about with the
/// level's name; False ends the change over all levels.
bool ChangeLevelAudio(Session& session, const std::string& name, const Path& files);

} // namespace kestrova
