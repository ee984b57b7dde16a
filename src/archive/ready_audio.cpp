#include "archive/ready_audio.h"

#include "audio/audio_batch.h"
#include "audio/mpeg_frames.h"
#include "audio/ms_adpcm_writer.h"
#include "catalogue/message.h"

#include <algorithm>

namespace kestrova
{

namespace
{

bool IsMp3(const ReadyFile& file)
{
    return IsMp3Name(file.name);
}

std::string WaveName(const ReadyFile& file)
{
    return StripExtension(file.name) + GetMsg(Msg::WavExtension);
}

/// The wave takes the place of one of the same name, whose spelling stays.
void PutWave(std::vector<ReadyFile>& files, ReadyFile wave)
{
    const auto same = std::find_if(files.begin(), files.end(), [&](const ReadyFile& file) {
        return EqualNames(file.name, wave.name);
    });
    if (same == files.end()) {
        files.push_back(std::move(wave));
        return;
    }
    wave.name = same->name;
    *same = std::move(wave);
}

std::vector<ReadyFile> TakeMp3s(std::vector<ReadyFile>& files)
{
    std::vector<ReadyFile> mp3s;
    std::copy_if(files.begin(), files.end(), std::back_inserter(mp3s), IsMp3);
    std::erase_if(files, IsMp3);
    return mp3s;
}

} // namespace

bool IsMp3Name(const std::string& name)
{
    return EndsWithName(name, RowText(Msg::Mp3Extension));
}

bool AnyMp3(const std::vector<ReadyFile>& files)
{
    return std::any_of(files.begin(), files.end(), IsMp3);
}

void SortByListing(std::vector<ReadyFile>& files)
{
    std::vector<std::pair<std::string, ReadyFile>> keyed;
    for (ReadyFile& file : files) {
        std::string key = UpperCase(file.name);
        keyed.emplace_back(std::move(key), std::move(file));
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second.name < b.second.name;
    });
    files.clear();
    for (auto& [key, file] : keyed)
        files.push_back(std::move(file));
}

void NameAsWaves(std::vector<ReadyFile>& files,
                 const std::function<Result<std::string>(const ReadyFile&)>& contentOf)
{
    constexpr int channels = 2;
    constexpr int rate = 44100;
    const MsAdpcmEncoder encoder{channels, rate};
    for (ReadyFile& file : TakeMp3s(files)) {
        const auto bytes = contentOf(file);
        const MpegFacts sound = bytes ? ScanMpeg(*bytes) : MpegFacts{};
        if (sound.frames == 0) {
            files.push_back(std::move(file));
            continue;
        }
        const auto from = static_cast<std::uint64_t>(sound.first.rate);
        file.size = encoder.WaveSize((sound.samples * rate + from / 2) / from);
        file.name = WaveName(file);
        PutWave(files, std::move(file));
    }
    SortByListing(files);
}

bool DecodeReadyFiles(Session& session, std::vector<ReadyFile>& files, const Path& staging)
{
    const std::vector<ReadyFile> mp3s = TakeMp3s(files);
    std::vector<Path> sources;
    for (const ReadyFile& file : mp3s) {
        // What is only called so is nothing that a level waits for, and must not keep it from play.
        if (const auto bytes = ReadWholeFile(file.path); bytes && ScanMpeg(*bytes).frames == 0)
            files.push_back(file);
        else
            sources.push_back(file.path);
    }
    if (sources.empty()) {
        SortByListing(files);
        return true;
    }
    if (const auto made = MakeFolders(staging); !made) {
        TellFailure(session, GetMsg(Msg::CannotCreateFolder, {TextOf(staging)}), made.Error());
        return false;
    }
    AudioBatch batch{session, sources, staging, AudioKind::Adpcm};
    if (!batch.Run()) {
        session.host.Tell(Tone::Error, GetMsg(Msg::FailedConversion) + batch.StatusText());
        return false;
    }
    for (const AudioBatch::Pair& pair : batch.Converted()) {
        const auto origin = std::find_if(mp3s.begin(), mp3s.end(), [&](const ReadyFile& file) {
            return file.path == pair.source;
        });
        ReadyFile wave{WaveName(*origin), pair.result, true};
        // The same stored file gives the same wave with the same time. Some disks keep no times.
        (void)platform::SetModified(pair.result, origin->modifiedNs);
        const platform::FileFacts facts = platform::FactsOf(pair.result);
        wave.size = facts.size;
        wave.modifiedNs = facts.modifiedNs;
        if (origin->moved)
            (void)DeleteFile(origin->path); // the whole folder goes at the end
        PutWave(files, std::move(wave));
    }
    SortByListing(files);
    return true;
}

} // namespace kestrova
