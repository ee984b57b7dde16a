#include "storage/stored_audio.h"

#include "conversion/audio_batch.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/program_folder.h"
#include "session/telling.h"
#include "storage/form_clashes.h"
#include "storage/zl_file.h"
#include "words/storage.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

/// What an encoding came to.
enum class EncodedFiles { All, AcceptedLoss };

Result<EncodedFiles> Encode(const Host& host, AudioBatch& batch, const AcceptLoss& accept)
{
    if (host.WorksUnattended())
        batch.LetPassOver(AudioBatch::PassOver::WhenAsked);
    const auto done = batch.Run();
    if (done)
        return EncodedFiles::All;
    Failure failure = ConversionFailed(Msg::AudioCompressionFailed, done.Error());
    // A loss of sounds, after a stop too, is for nobody but the person to accept.
    if (accept && accept(failure))
        return EncodedFiles::AcceptedLoss;
    failure.code = ErrorCode::NotDone;
    return failure;
}

bool IsWave(const std::string& name)
{
    return EndsWithName(name, OnDisk::WavExtension);
}

/// A wave under the name that it has in the level.
Status NamedSource(const LevelFile& file, const Path& work, Path& source)
{
    source = file.path;
    if (EqualNames(file.path.filename().native(), file.name))
        return {};
    source = work / file.name;
    return CopyFileOver(file.path, source);
}

/// The level has an mp3 of that name, deflated or not, that the wave's must not take the place of.
bool HasOwnMp3(const NamesInUse& names, const std::string& wave)
{
    const std::string mp3 = StripExtension(wave) + std::string{OnDisk::Mp3Extension};
    return names.Uses(mp3) > 0 || names.Uses(mp3 + std::string{OnDisk::ZlExtension}) > 0;
}

std::string PatternOf(std::string_view extension)
{
    return "*" + std::string{extension};
}

} // namespace

Status EncodeWaves(Host& host, const SoundConverter& converter, std::vector<LevelFile>& files,
                   const Path& work, const AcceptLoss& accept)
{
    // Of two files of one name the later one counts, as in the stored folder.
    NamesInUse names;
    for (const LevelFile& file : files)
        names.Add(file.name);
    std::vector<std::string> kept;
    std::vector<LevelFile> waves;
    for (const LevelFile& file : files) {
        if (!IsWave(file.name))
            continue;
        if (HasOwnMp3(names, file.name)) {
            kept.push_back(file.name);
            continue;
        }
        std::erase_if(waves,
                      [&](const LevelFile& other) { return EqualNames(other.name, file.name); });
        waves.push_back(file);
    }
    TellKeptForms(host, kept);
    if (waves.empty())
        return {};
    std::vector<Path> sources;
    for (const LevelFile& wave : waves) {
        Path source;
        if (auto status = NamedSource(wave, work, source); !status)
            return status;
        sources.push_back(std::move(source));
    }
    AudioBatch batch{host, converter, sources, work, AudioKind::Mp3};
    const auto encoded = Encode(host, batch, accept);
    if (!encoded)
        return encoded.Error();
    std::erase_if(files, [&](const LevelFile& file) {
        return IsWave(file.name) && !HasOwnMp3(names, file.name);
    });
    for (std::size_t i = 0; i < waves.size(); ++i) {
        const auto pair =
            std::find_if(batch.Converted().begin(), batch.Converted().end(),
                         [&](const AudioBatch::Pair& done) { return done.source == sources[i]; });
        if (pair != batch.Converted().end())
            files.push_back(
                {StripExtension(waves[i].name) + std::string{OnDisk::Mp3Extension}, pair->result});
        else if (*encoded == EncodedFiles::All)
            files.push_back(waves[i]); // the person passed it over
    }
    return {};
}

Status EncodeWavesInPlace(Host& host, const SoundConverter& converter, const Path& folder,
                          const AcceptLoss& accept)
{
    const auto listed = ListFiles(folder, OnDisk::PatAll);
    if (!listed)
        return FolderNotRead(listed.Error());
    NamesInUse names;
    for (const Path& file : *listed)
        names.Add(file.filename().native());
    std::vector<Path> waves;
    std::vector<std::string> kept;
    for (const Path& file : *listed)
        if (IsWave(file.filename().native())) {
            if (HasOwnMp3(names, file.filename().native()))
                kept.push_back(TextOf(file.filename()));
            else
                waves.push_back(file);
        }
    TellKeptForms(host, kept);
    if (waves.empty())
        return {};
    AudioBatch batch{host, converter, waves, folder, AudioKind::Mp3};
    const auto encoded = Encode(host, batch, accept);
    if (!encoded)
        return encoded.Error();
    Status status = DeleteConverted(batch);
    if (*encoded == EncodedFiles::AcceptedLoss)
        for (const Path& wave : waves)
            if (status)
                status = DeleteFile(wave);
    return status;
}

Status ChangeStoredAudio(Host& host, Machine& machine, const SoundConverter& converter,
                         const Path& folder, bool toMp3, UnfitSounds unfit)
{
    const std::string pattern = PatternOf(toMp3 ? OnDisk::WavExtension : OnDisk::Mp3Extension);
    const WorkFolder work{InFolder(converter.tools.programFolder, OnDisk::DirTempCompr),
                          WorkFolder::Make::Now};
    std::vector<Path> sources;
    std::map<Path, std::vector<Path>> origins; // of each source
    std::multimap<std::string, Path> byName;   // the sources, by folded name
    const auto add = [&](const Path& source, const Path& origin) {
        sources.push_back(source);
        origins[source] = {origin};
        byName.emplace(FoldCase(source.filename().native()), source);
    };
    const auto plain = ListFiles(folder, pattern);
    const auto streams = ListFiles(folder, pattern + std::string{OnDisk::ZlExtension});
    if (!plain || !streams)
        return FolderNotRead(plain ? streams.Error() : plain.Error());
    for (const Path& file : *plain)
        add(file, file);
    for (const Path& stream : *streams) {
        const auto free = machine.FreeSpace(work.Folder());
        const Path expanded = work.Folder() / StripExtension(stream.filename().native());
        const Status status = free ? ExpandZl(stream, expanded, *free) : Status{free.Error()};
        if (!status)
            return Saying(GetMsg(Msg::ErrorUnzippingFile) + TextOf(stream.filename()) + "'",
                          status);
        // A killed run leaves a file beside its own stream.
        const auto [first, last] = byName.equal_range(FoldCase(expanded.filename().native()));
        const auto same = std::find_if(
            first, last, [&](const auto& entry) { return SameContent(entry.second, expanded); });
        if (same == last)
            add(expanded, stream);
        else
            origins[same->second].push_back(stream);
    }
    if (sources.empty())
        return {};
    AudioBatch batch{host, converter, sources, work.Folder(),
                     toMp3 ? AudioKind::Mp3 : AudioKind::Adpcm};
    if (unfit == UnfitSounds::Stay)
        batch.LetPassOver(AudioBatch::PassOver::Always);
    if (auto done = batch.Run(); !done)
        return done;
    CopyOptions compared;
    compared.verify = Verify::Content;
    compared.flush = true;
    std::vector<std::string> kept;
    for (const AudioBatch::Pair& pair : batch.Converted()) {
        const Path target = folder / pair.result.filename();
        const auto there = CaseTwins(target);
        Status status = there ? Status{} : Status{there.Error()};
        if (there && !there->empty() &&
            (there->size() > 1 || !SameContent(pair.result, there->front()))) {
            for (const Path& origin : origins[pair.source])
                kept.push_back(TextOf(origin.filename()));
            continue;
        }
        if (there && there->empty())
            status = CopyFileOver(pair.result, target, compared);
        if (status)
            status = FlushFolder(folder);
        // As they are spelled: another one's spelling may be a sound that did not come through.
        for (const Path& origin : origins[pair.source])
            if (const auto failure = status ? platform::Unlink(origin) : std::error_code{})
                status = MakeFailure(ErrorCode::CannotDelete, TextOf(origin), failure);
        if (!status)
            return Saying(GetMsg(Msg::ErrorStoringFiles), status);
    }
    TellKeptForms(host, kept);
    return {};
}

} // namespace kestrova
