#pragma once

#include "storage/game_files.h"
#include "storage/storage.h"

namespace kestrova
{

/// Mp3 files of a level on their way into the Level Editor's folder, which knows only waves.

/// Names and sizes as they will be; `contentOf` gives the bytes of a stored file.
void NameAsWaves(std::vector<ReadyFile>& files,
                 const std::function<Result<std::string>(const ReadyFile&)>& contentOf);

bool IsMp3Name(const std::string& name);
bool AnyMp3(const std::vector<ReadyFile>& files);

/// Decodes the mp3 files among them into `staging`, in the form that the game reads; a wave of the
/// same name gives way. A file without sound in it stays as it is; one that the person passed over
/// is left out.
Status DecodeReadyFiles(Host& host, const SoundConverter& converter, std::vector<ReadyFile>& files,
                        const Path& staging);

/// In listing order, for lists whose names have changed.
void SortByListing(std::vector<ReadyFile>& files);

} // namespace kestrova
