#include "storage/stored_form.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "pictures/convert.h"
#include "storage/stored_audio.h"
#include "storage/zl_file.h"

namespace kestrova
{

namespace
{

/// The wave as the mp3 that stands in its place; other files as they are.
Result<Path> EncodedForm(Host& host, const SoundConverter& converter, const StoredEntry& noted,
                         const Path& source, const Path& work)
{
    const std::string& came = noted.from->name;
    if (!EndsWithName(came, OnDisk::WavExtension) ||
        EndsWithName(noted.name,
                     std::string{OnDisk::WavExtension} + std::string{OnDisk::ZlExtension}))
        return source;
    std::vector<LevelFile> files{{came, source}};
    if (auto status = EncodeWaves(host, converter, files, work, {}); !status)
        return status.Error();
    return files.empty() ? Result<Path>{MakeFailure(ErrorCode::NotDone, TextOf(source))}
                         : files.front().path;
}

} // namespace

Result<Path> MakeStoredForm(Host& host, const SoundConverter& converter, const StoredEntry& noted,
                            const Path& source, const Path& work)
{
    const Path target = work / noted.name;
    CopyOptions compared;
    compared.verify = Verify::Content;
    compared.spelled = true;
    compared.rights = plainRights; // a disc's files are read-only
    const auto done = [&](const Status& status) {
        return status ? Result<Path>{target} : Result<Path>{status.Error()};
    };
    if (!noted.from)
        return done(CopyFileOver(source, target, compared));
    const auto ready = EncodedForm(host, converter, noted, source, work);
    if (!ready)
        return ready.Error();
    if (EndsWithName(noted.name, OnDisk::ZlExtension))
        return done(CompressToZl(*ready, target));
    if (EqualNames(noted.name, OnDisk::LoadJpg))
        return done(ConvertBitmapToJpeg(*ready, target));
    return *ready == target ? Result<Path>{target} : done(CopyFileOver(*ready, target, compared));
}

} // namespace kestrova
