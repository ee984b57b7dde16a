#include "publish/upload_wizard.h"

#include "core/file_kinds.h"
#include "core/size_words.h"
#include "formats/config_values.h"
#include "publish/file_names.h"
#include "words/file_list.h"
#include "words/wizard.h"

namespace kestrova
{

namespace
{

std::vector<UploadChoice> Choices(std::string_view codes, std::initializer_list<Message> texts)
{
    std::vector<UploadChoice> choices;
    const auto* text = texts.begin();
    for (std::string& code : Split(codes, '|'))
        choices.push_back({std::move(code), GetMsg(*text++)});
    return choices;
}

} // namespace

UploadWizard::UploadWizard(Session& owner, ProgressScope& scope, const Path& folder)
    : session(owner), progress(scope), place(folder.empty() ? owner.programFolder : folder),
      work(ResolvePath(InFolder(place, OnDisk::DirTempConfig)), WorkFolder::Make::Now,
           [&scope] { return (void)scope.Step(), true; })
{
}

std::string UploadWizard::FilesText() const
{
    return std::to_string(files.size()) + GetMsg(Msg::CountOfFiles) + FormatSize(filesBytes) +
           GetMsg(Msg::ClosingRound);
}

std::string UploadWizard::FileNamed(std::string_view fileName) const
{
    for (const UploadFile& file : files)
        if (const std::string own = file.path.filename().native(); EqualNames(own, fileName))
            return own;
    return {};
}

std::vector<UploadChoice> ExeFormats()
{
    return Choices(OnDisk::ConfigExeFormats,
                   {Msg::UploadNoExe, Msg::UploadExeZip, Msg::UploadExeTrle, Msg::UploadExeMirror,
                    Msg::UploadExeFlyDrive});
}

std::vector<UploadChoice> WaveCds()
{
    return Choices(OnDisk::ConfigCdCodes, {Msg::UploadNone, Msg::UploadTr4, Msg::UploadTr5});
}

} // namespace kestrova
