#pragma once

#include "storage/file_jobs.h"
#include "storage/storage.h"
#include "storage/stored_hashes.h"

/// What each file of a level becomes in its stored form, and how.
namespace kestrova
{

/// One file on its way into the stored form.
struct StoreStep {
    Path source;
    std::string name; ///< in the stored folder
    enum class Form { Copy, Deflate, Jpeg } form = Form::Copy;
};

/// A file whose stored form would have another file's name stays as it is, and so do files whose
/// names differ by case alone; `kept` names them.
std::vector<StoreStep> StepsFor(const std::vector<LevelFile>& files, bool compress,
                                std::vector<std::string>& kept);
/// What the stored forms are made of, while it is there. Of an mp3 that was made just now, the wave
/// that it was.
StoredOrigins OriginsOf(const std::vector<StoreStep>& steps, const StoredOrigins& made);

/// Ends with the file's stored form in `folder`, read back. `ready` may be null.
Status RunStep(const StoreStep& step, const Path& folder, const ReadyStreams* ready);
/// The same of a file of that folder, which goes when its stored form was read back.
Status RunInPlace(const StoreStep& step, const Path& folder, const ReadyStreams* ready);
/// The step as one of many, with its share and its words.
FileJob JobFor(const StoreStep& step, std::function<Status()> run);

} // namespace kestrova
