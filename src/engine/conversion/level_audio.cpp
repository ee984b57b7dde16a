#include "conversion/level_audio.h"

#include "core/file_kinds.h"
#include "session/telling.h"
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

bool DecodeList(Session& session, const Path& folder, const std::vector<Path>& files,
                AudioKind kind, Message words)
{
    if (files.empty())
        return true;
    AudioBatch batch{session, files, folder, kind};
    batch.LetPassOver(AudioBatch::PassOver::WhenAsked);
    if (!batch.Run()) {
        session.host.Tell(Tone::Error, GetMsg(words) + batch.StatusText());
        return false;
    }
    const Status status = DeleteConverted(batch);
    if (!status)
        TellFailure(session.host, GetMsg(Msg::ErrorRemovingFiles), status.Error());
    return bool{status};
}

} // namespace

bool DecodeLevelMp3(Session& session, const Path& folder, const std::vector<Path>& files,
                    bool force, bool samplesOnly)
{
    if (!force && !session.archive.header.wavInMp3)
        return true;
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
    return DecodeList(session, folder, tracks, AudioKind::Adpcm, Msg::FailedConversion) &&
           DecodeList(session, folder, samples, AudioKind::Mono, Msg::ErrorDecodingMp3s);
}

} // namespace kestrova
