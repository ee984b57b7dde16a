#include "publish/finish_upload.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "packages/level_config_file.h"
#include "packages/zip_folder.h"
#include "publish/file_names.h"
#include "publish/upload_texts.h"
#include "session/cleared_progress.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "tools/tools.h"
#include "words/common.h"
#include "words/sources.h"
#include "words/wizard.h"

namespace kestrova
{

namespace
{

/// The package's place; nothing when the author cancelled.
std::optional<Path> UploadPlace(UploadWizard& wizard)
{
    auto chosen = wizard.session.host.ChooseSaveFile(
        GetMsg(Msg::UploadSaveTitle), GetMsg(Msg::ZipSaveFilter), {}, UploadNameFor(wizard));
    if (chosen && !EndsWithName(chosen->filename().native(), OnDisk::EndingZip))
        return Path{chosen->native() + std::string{OnDisk::EndingZip}};
    return chosen;
}

bool Pack(UploadWizard& wizard, const Path& target, const Path& folder)
{
    Host& host = wizard.session.host;
    wizard.progress.AllowStop();
    wizard.progress.SetLabel(GetMsg(Msg::UploadZipping));
    ToolProgressState state{&wizard.progress};
    state.tell = [&](const std::string& text) { host.Tell(Tone::Plain, text); };
    const Status packed = ReplaceZip(ToolsOf(wizard.session), target, folder, state);
    ClearProgress(wizard.progress);
    if (packed)
        return true;
    Failure failure = packed.Error();
    if (failure.code == ErrorCode::Stopped)
        host.Tell(Tone::Warning, GetMsg(Msg::BreakUser));
    else
        TellFailure(host, GetMsg(Msg::UploadErrorZipping) + TextOf(target), failure);
    return false;
}

/// The configuration file, and the folder that is packed.
class Packed
{
public:
    explicit Packed(const UploadWizard& wizard) : files_(wizard.work.Folder())
    {
        if (wizard.configOnly)
            alone_.emplace(InFolder(files_, OnDisk::DirConfigOnly), WorkFolder::Make::Now);
    }
    /// The author may go on with the files as they were.
    ~Packed() { (void)DeleteFile(Config()); }
    Packed(const Packed&) = delete;
    Packed& operator=(const Packed&) = delete;

    [[nodiscard]] const Path& Folder() const { return alone_ ? alone_->Folder() : files_; }
    [[nodiscard]] Path Config() const { return LevelConfigPath(Folder()); }

private:
    const Path files_;
    std::optional<WorkFolder> alone_;
};

} // namespace

std::string UploadNameFor(const UploadWizard& wizard)
{
    const std::string name = ReplaceForbiddenChars(Trim(wizard.config.name));
    return Filled(wizard.configOnly ? OnDisk::ConfigUploadName : OnDisk::UploadName, {name});
}

bool FinishUpload(UploadWizard& wizard, const Path& given)
{
    Host& host = wizard.session.host;
    const auto zip = given.empty() ? UploadPlace(wizard) : given;
    if (!zip)
        return false;
    const auto target = FileToWrite(*zip);
    if (!DoneOrTold(host, StatusOf(target)))
        return false;
    const Packed packed{wizard};
    if (!DoneOrTold(host, WriteLevelConfig(packed.Config(), wizard.config, OldConfig::Replaced)))
        return false;
    const bool made = Pack(wizard, *target, packed.Folder());
    if (made) {
        host.Tell(Tone::Plain, GetMsg(Msg::UploadDone) + TextOf(*zip));
        if (wizard.keepsTexts)
            ForgetUploadTexts(wizard.session.Folders());
    } else if (wizard.keepsTexts && !KeepUploadTexts(wizard)) {
        return false;
    }
    wizard.isOver = true;
    wizard.progress.SetLabel(GetMsg(Msg::UploadClearing));
    // What stays is cleared by the next use.
    (void)ClearPlace(wizard.work.Folder(), [&] { return (void)wizard.progress.Step(), true; });
    return made;
}

} // namespace kestrova
