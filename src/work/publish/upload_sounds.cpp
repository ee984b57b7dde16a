#include "publish/upload_sounds.h"

#include "conversion/audio_batch.h"
#include "conversion/sound_converter.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "formats/trle_folder.h"
#include "pictures/convert.h"
#include "publish/file_names.h"
#include "publish/upload_files.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/storage.h"
#include "words/wizard.h"

#include <algorithm>

namespace kestrova
{

namespace
{

std::vector<Path> WavesOf(const UploadWizard& wizard)
{
    std::vector<Path> waves;
    for (const UploadFile& file : wizard.files)
        if (EndsWithName(file.path.filename().native(), OnDisk::WavExtension))
            waves.push_back(file.path);
    return waves;
}

/// False, with a message, when one of them could not be copied; one that is not there is named.
bool CopyDecoder(UploadWizard& wizard)
{
    Host& host = wizard.session.host;
    const Path& programFolder = wizard.session.programFolder;
    std::vector<std::string> lacking;
    for (const std::string& name : Split(OnDisk::DecoderUtilities, '|')) {
        const Path source = ResolvePath(programFolder / name);
        const Path target = wizard.work.Folder() / name;
        if (!FileExists(source)) {
            lacking.push_back(name);
            continue;
        }
        if (const auto copied = CopyFileOver(source, target); !copied) {
            TellFailure(host, GetMsg(Msg::ErrorCopyingDecoder, {TextOf(source)}) + TextOf(target),
                        copied.Error());
            return false;
        }
    }
    if (!lacking.empty())
        host.Tell(Tone::Plain,
                  GetMsg(Msg::DecoderLacks, {ShownNames(lacking), TextOf(programFolder)}));
    return true;
}

/// The converted sounds in place of their waves. An mp3 of the author's own gives way only when the
/// author says so.
Status PutInPlace(UploadWizard& wizard, const AudioBatch& batch)
{
    std::size_t done = 0;
    for (const AudioBatch::Pair& pair : batch.Converted()) {
        const Path target = ResolvePath(wizard.work.Folder() / pair.result.filename());
        if (IsFile(target).ValueOr(true) &&
            !ConfirmReplace(wizard.session.host, pair.result, target))
            continue;
        if (auto moved = MoveFileOver(pair.result, target); !moved)
            return moved;
        if (const auto failure = platform::Unlink(pair.source))
            return MakeFailure(ErrorCode::CannotDelete, TextOf(pair.source), failure);
        wizard.progress.SetBar(++done, batch.Converted().size());
        (void)wizard.progress.Step(); // the waves that are left stay what they are
    }
    return {};
}

Status Convert(UploadWizard& wizard, const std::vector<Path>& waves)
{
    const WorkFolder made{ResolvePath(InFolder(wizard.place, OnDisk::DirTempMp3)),
                          WorkFolder::Make::Now};
    if (!made.IsClear())
        return made.IsClear();
    wizard.progress.SetLabel(GetMsg(Msg::AudioInProgress));
    AudioBatch batch{wizard.session.host, SoundConverterOf(wizard.session), waves, made.Folder(),
                     AudioKind::Mp3};
    if (auto status = batch.Run(); !status)
        return status;
    wizard.progress.SetLabel(GetMsg(Msg::StoreFileCopy));
    return PutInPlace(wizard, batch);
}

} // namespace

bool HasLoadPicture(const UploadWizard& wizard)
{
    return !wizard.FileNamed(OnDisk::LoadBmp).empty();
}

bool HasSounds(const UploadWizard& wizard)
{
    return !WavesOf(wizard).empty();
}

bool CompressLoadPicture(UploadWizard& wizard)
{
    Host& host = wizard.session.host;
    if (!HasLoadPicture(wizard)) {
        host.Tell(Tone::Error, GetMsg(Msg::LoadBmpNotFound));
        return false;
    }
    const Path bitmap = wizard.work.Folder() / OnDisk::LoadBmp;
    const Path jpeg = wizard.work.Folder() / OnDisk::LoadJpg;
    auto status = ConvertBitmapToJpeg(bitmap, jpeg);
    if (status)
        status = DeleteFile(bitmap);
    if (!status)
        TellFailure(host, GetMsg(Msg::ErrorLoadBmp), status.Error());
    return RefreshFiles(wizard) && status;
}

bool CompressSounds(UploadWizard& wizard, bool withDecoder)
{
    Host& host = wizard.session.host;
    const std::vector<Path> waves = WavesOf(wizard);
    if (waves.empty()) {
        host.Tell(Tone::Error, GetMsg(Msg::NoWavFiles));
        return false;
    }
    const bool copied = !withDecoder || CopyDecoder(wizard);
    const Status converted = copied ? Convert(wizard, waves) : Status{};
    if (!converted)
        TellFailure(host, ConversionFailed(Msg::ErrorConvertingWaves, converted.Error()));
    ClearProgress(wizard.progress);
    return RefreshFiles(wizard) && copied && converted;
}

bool HasDecoderUtilities(const Path& programFolder)
{
    const std::vector<std::string> names = Split(OnDisk::DecoderUtilities, '|');
    return std::all_of(names.begin(), names.end(),
                       [&](const std::string& name) { return FileExists(programFolder / name); });
}

} // namespace kestrova
