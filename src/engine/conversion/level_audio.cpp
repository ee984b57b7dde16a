#include "conversion/level_audio.h"

#include "core/file_kinds.h"
#include "core/text.h"
#include "words/conversion.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsTrack(const Path& file)
{
    const std::string stem = StripExtension(file.filename().native());
    return std::all_of(stem.begin(), stem.end(),
                       [](char byte) { return byte >= '0' && byte <= '9'; });
}

Status DecodeList(Host& host, const SoundConverter& converter, const Path& folder,
                  const std::vector<Path>& files, AudioKind kind, Message words)
{
    if (files.empty())
        return {};
    AudioBatch batch{host, converter, files, folder, kind};
    batch.LetPassOver(AudioBatch::PassOver::WhenAsked);
    if (const auto done = batch.Run(); !done)
        return ConversionFailed(words, done.Error());
    return Saying(GetMsg(Msg::ErrorRemovingFiles), DeleteConverted(batch));
}

} // namespace

Status DecodeLevelMp3(Host& host, const SoundConverter& converter, const Archive& archive,
                      const Path& folder, const std::vector<Path>& files, bool force,
                      bool samplesOnly)
{
    if (!force && !archive.header.wavInMp3)
        return {};
    std::vector<Path> tracks;
    std::vector<Path> samples;
    for (const Path& file : files) {
        if (!EndsWithName(file.filename().native(), OnDisk::Mp3Extension))
            continue;
        if (!IsTrack(file))
            samples.push_back(file);
        else if (!samplesOnly)
            tracks.push_back(file);
    }
    auto decoded =
        DecodeList(host, converter, folder, tracks, AudioKind::Adpcm, Msg::FailedConversion);
    return decoded ? DecodeList(host, converter, folder, samples, AudioKind::Mono,
                                Msg::ErrorDecodingMp3s)
                   : decoded;
}

} // namespace kestrova
