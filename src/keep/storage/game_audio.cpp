#include "storage/game_audio.h"

#include "audio/mpeg_frames.h"
#include "audio/ms_adpcm_writer.h"
#include "conversion/audio_batch.h"
#include "core/file_kinds.h"
#include "core/text.h"
#include "storage/game_files.h"
#include "words/common.h"
#include "words/conversion.h"

#include <algorithm>
#include <unordered_map>

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
    return StripExtension(file.name) + std::string{OnDisk::WavExtension};
}

/// Each wave takes the place of one of the same name, whose spelling stays.
void PutWaves(std::vector<ReadyFile>& files, std::vector<ReadyFile> waves)
{
    std::unordered_map<std::string, std::size_t> places; // by folded name, the first of equals
    for (std::size_t i = 0; i < files.size(); ++i)
        places.emplace(FoldCase(files[i].name), i);
    for (ReadyFile& wave : waves) {
        const auto [same, isNew] = places.emplace(FoldCase(wave.name), files.size());
        if (isNew) {
            files.push_back(std::move(wave));
            continue;
        }
        wave.name = files[same->second].name;
        files[same->second] = std::move(wave);
    }
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
    return EndsWithName(name, OnDisk::Mp3Extension);
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
    std::vector<ReadyFile> waves;
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
        waves.push_back(std::move(file));
    }
    PutWaves(files, std::move(waves));
    SortByListing(files);
}

Status DecodeReadyFiles(Host& host, const SoundConverter& converter, std::vector<ReadyFile>& files,
                        const Path& staging)
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
        return {};
    }
    if (auto made = MakeFolders(staging); !made)
        return Saying(GetMsg(Msg::CannotCreateFolder, {TextOf(staging)}), made);
    AudioBatch batch{host, converter, sources, staging, AudioKind::Adpcm};
    if (const auto done = batch.Run(); !done)
        return ConversionFailed(Msg::FailedConversion, done.Error());
    std::unordered_map<std::string, const ReadyFile*> origins; // by path
    for (const ReadyFile& file : mp3s)
        origins.emplace(file.path.native(), &file);
    std::vector<ReadyFile> waves;
    for (const AudioBatch::Pair& pair : batch.Converted()) {
        const ReadyFile* const origin = origins.at(pair.source.native());
        ReadyFile wave{WaveName(*origin), pair.result, true};
        // The same stored file gives the same wave with the same time. Some disks keep no times.
        (void)platform::SetModified(pair.result, origin->modifiedNs);
        const platform::FileFacts facts = platform::FactsOf(pair.result);
        wave.size = facts.size;
        wave.modifiedNs = facts.modifiedNs;
        if (origin->moved)
            (void)DeleteFile(origin->path); // the whole folder goes at the end
        waves.push_back(std::move(wave));
    }
    PutWaves(files, std::move(waves));
    SortByListing(files);
    return {};
}

} // namespace kestrova
