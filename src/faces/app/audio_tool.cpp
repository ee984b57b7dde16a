#include "app/audio_tool.h"

#include "audio/sound_info.h"
#include "conversion/audio_batch.h"
#include "conversion/sound_converter.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "core/size_words.h"
#include "formats/program_folder.h"
#include "intake/source_choice.h"
#include "intake/source_tree.h"
#include "session/telling.h"
#include "words/app.h"
#include "words/audio.h"
#include "words/common.h"
#include "words/conversion.h"
#include "words/file_list.h"
#include "words/intake.h"
#include "words/session.h"

namespace kestrova
{

namespace
{

constexpr std::size_t nameColumns = 17;

/// `44100Hz 16 bits stereo`, or that it is an mp3.
std::string WhatItHolds(const Path& file)
{
    if (EndsWithName(file.filename().native(), OnDisk::Mp3Extension))
        return GetMsg(Msg::RowMp3);
    if (!LookAtSound(file))
        return GetMsg(Msg::RowNoSound);
    WavHeader header;
    (void)ReadWavHeader(file, header); // it could be read a moment ago
    return std::to_string(header.sampleRate) +
           GetMsg(Msg::RowBits, {std::to_string(header.bitsPerSample)}) +
           (header.channels == 1   ? GetMsg(Msg::WaveMono)
            : header.channels == 2 ? GetMsg(Msg::WaveStereo)
                                   : "");
}

} // namespace

AudioTool::AudioTool(Session& session, AudioToolMode mode)
    : session_(session), mode_(mode), work_(InFolder(session.programFolder, OnDisk::DirAudioTemp))
{
}

std::string AudioTool::Extension() const
{
    return std::string{mode_ == AudioToolMode::Decode ? OnDisk::Mp3Extension
                                                      : OnDisk::WavExtension};
}

bool AudioTool::Open()
{
    origins_.clear();
    Status status = ClearPlace(work_);
    if (status)
        status = MakeFolders(work_);
    if (!status)
        TellFailure(session_.host, GetMsg(Msg::CannotCreateFolder, {TextOf(work_)}),
                    status.Error());
    Refresh();
    return bool{status};
}

void AudioTool::Leave()
{
    const auto wait =
        session_.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::RemovingTempFiles));
    const auto status = ClearPlace(work_, [&] { return wait->Step(), true; });
    if (!status)
        TellFailure(session_.host, GetMsg(Msg::ErrorDeletingFolder) + TextOf(work_),
                    status.Error());
}

void AudioTool::Refresh()
{
    const auto files = ListFiles(work_, OnDisk::PatAll);
    if (!files) {
        TellFolderNotRead(session_.host, files.Error());
        return;
    }
    rows_.clear();
    size_ = 0;
    for (const Path& file : *files) {
        Row row{file.filename().native(), TextOf(file.filename())};
        if (row.text.size() < nameColumns)
            row.text.resize(nameColumns, ' ');
        row.text += " " + WhatItHolds(file);
        rows_.push_back(std::move(row));
        size_ += static_cast<double>(FileSize(file));
    }
}

std::string AudioTool::SizeText() const
{
    return std::to_string(rows_.size()) + GetMsg(Msg::CountOfFiles) + FormatSize(size_) + ")";
}

bool AudioTool::Take(const std::vector<Path>& files)
{
    const auto progress =
        session_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::GatheringSounds));
    progress->AllowStop();
    bool all = true;
    for (std::size_t i = 0; i < files.size() && all; ++i) {
        const Path place = work_ / files[i].filename();
        if (IsFile(place).ValueOr(true) && !SameContent(files[i], place) &&
            !ConfirmReplace(session_.host, files[i], place))
            continue;
        CopyOptions options;
        options.progress = [&](std::uint64_t) { return progress->Step(); };
        const auto status = CopyFileOver(files[i], place, options);
        progress->SetBar(i + 1, files.size());
        all = bool{status};
        if (status)
            origins_.push_back(files[i]);
        if (!status && status.Error().code != ErrorCode::Stopped)
            TellFailure(session_.host, GetMsg(Msg::ErrorGathering, {TextOf(files[i])}),
                        status.Error());
    }
    Refresh();
    return all;
}

void AudioTool::AddFile()
{
    if (const auto file = ChooseSourceFile(session_.host, session_.preferences, Extension()))
        AddPaths({*file});
}

void AudioTool::AddFolder()
{
    if (const auto folder = ChooseSourceFolder(session_.host, session_.preferences))
        AddPaths({*folder});
}

std::vector<Path> AudioTool::SoundsIn(const Path& folder)
{
    const auto progress =
        session_.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::GatheringSounds));
    const auto found =
        FilesOfSource(session_.host, folder, Extension(), Subfolders::Ask, *progress);
    if (found)
        return *found;
    TellFailure(session_.host, GetMsg(Msg::SourceFolderNotRead, {TextOf(folder)}), found.Error());
    return {};
}

void AudioTool::AddPaths(const std::vector<Path>& paths)
{
    const std::string type = Extension();
    std::vector<Path> files;
    std::vector<std::string> strange;
    for (const Path& path : paths) {
        if (FolderExists(path)) {
            const std::vector<Path> found = SoundsIn(path);
            files.insert(files.end(), found.begin(), found.end());
        } else if (EndsWithName(path.filename().native(), type)) {
            files.push_back(path);
        } else {
            strange.push_back(TextOf(path.filename()));
        }
    }
    if (!strange.empty())
        session_.host.Tell(Tone::Warning, GetMsg(Msg::StrangeSounds, {type}) + ShownNames(strange));
    if (!files.empty())
        Take(files);
    else if (strange.empty())
        session_.host.Tell(Tone::Plain, GetMsg(Msg::NoSoundsInFolder, {type}));
}

void AudioTool::Remove(std::size_t row)
{
    if (row >= rows_.size())
        return session_.host.Tell(Tone::Plain, GetMsg(Msg::NoFileSelected));
    if (!session_.host.AskYesNo(GetMsg(Msg::AskRemoveFile) + Readable(rows_[row].name)))
        return;
    if (const auto status = DeleteFile(work_ / rows_[row].name); !status)
        TellFailure(session_.host, GetMsg(Msg::ErrorRemovingFile) + rows_[row].name,
                    status.Error());
    Refresh();
}

void AudioTool::Listen(std::size_t row)
{
    if (row >= rows_.size())
        return;
    const Path file = work_ / rows_[row].name;
    if (const auto status = session_.machine.Open(file.native(), work_); !status)
        TellFailure(session_.host, GetMsg(Msg::CannotPlaySound, {TextOf(file.filename())}),
                    status.Error());
}

void AudioTool::BrowseTarget()
{
    // A path of the other system is no place to begin at here.
    const Path start =
        target_.empty() ? FolderFromText(Trim(session_.preferences.downloadFolder)) : target_;
    if (const auto folder = session_.host.ChooseFolder(GetMsg(Msg::ChooseSoundTarget), start))
        target_ = *folder;
}

bool AudioTool::Convert(AudioKind kind)
{
    if (target_.empty()) {
        session_.host.Tell(Tone::Error, GetMsg(Msg::SetTargetFolder));
        return false;
    }
    if (rows_.empty()) {
        session_.host.Tell(Tone::Error, GetMsg(Msg::NoSounds));
        return false;
    }
    std::vector<Path> files;
    for (const Row& row : rows_)
        files.push_back(work_ / row.name);
    AudioBatch batch{session_.host, SoundConverterOf(session_), files, target_, kind};
    batch.Protect(origins_);
    if (const auto done = batch.Run(); !done) {
        TellFailure(session_.host, ConversionFailed(Msg::FailedConversion, done.Error()));
        Refresh();
        return false;
    }
    if (rows_.size() == 1) {
        const std::string name =
            StripExtension(rows_.front().name) +
            std::string{kind == AudioKind::Mp3 ? OnDisk::Mp3Extension : OnDisk::WavExtension};
        const Path result = ResolvePath(target_ / name);
        if (FileExists(result) &&
            session_.host.AskYesNo(GetMsg(Msg::AskListen, {lineBreak}) + Readable(name) + "'"))
            if (const auto status = session_.machine.Open(result.native(), target_); !status)
                TellFailure(session_.host, GetMsg(Msg::CannotPlaySound, {Readable(name)}),
                            status.Error());
    }
    if (session_.host.AskYesNo(GetMsg(Msg::AskLeaveAudioTool))) {
        Leave();
        return true;
    }
    Refresh();
    return false;
}

} // namespace kestrova
