#include "publish/upload_files.h"

#include "core/file_kinds.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "intake/folder_sources.h"
#include "intake/source_choice.h"
#include "packages/level_config_file.h"
#include "publish/file_names.h"
#include "publish/upload_lists.h"
#include "session/telling.h"
#include "words/common.h"
#include "words/file_list.h"
#include "words/wizard.h"

#include <algorithm>
#include <limits>

namespace kestrova
{

namespace
{

bool ListAll(UploadWizard& wizard)
{
    const auto listed = ListFiles(wizard.work.Folder(), OnDisk::PatAll);
    if (!listed)
        return TellFolderNotRead(wizard.session.host, listed.Error());
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    wizard.files.clear();
    wizard.filesBytes = 0;
    wizard.config.files.clear();
    for (const Path& file : *listed) {
        const std::uint64_t size = FileSize(file);
        wizard.files.push_back({file, size});
        wizard.filesBytes += static_cast<double>(size);
        wizard.config.files.push_back(
            {file.native(), static_cast<std::int32_t>(std::min(size, most))});
    }
    return true;
}

/// An earlier configuration file among the files, brought back in.
void TakeConfig(UploadWizard& wizard)
{
    const Path file = LevelConfigPath(wizard.work.Folder());
    const auto read = ReadLevelConfig(file);
    if (const auto status = DeleteFile(file); !status)
        TellFailure(wizard.session.host, GetMsg(Msg::ErrorRemovingFile) + TextOf(file),
                    status.Error());
    if (!DoneOrTold(wizard.session.host, StatusOf(read)))
        return;
    wizard.config = *read;
    if (!Trim(wizard.config.duplicates).empty())
        wizard.session.host.Tell(Tone::Warning, GetMsg(Msg::UploadDuplicates));
    wizard.config.duplicates.clear();
    LoadConfigIntoPages(wizard);
}

void KeepDocument(UploadWizard& wizard)
{
    wizard.moreInfo = wizard.FileNamed(wizard.moreInfo);
    if (wizard.moreInfo.empty())
        wizard.moreInfo = wizard.FileNamed(FileNameOf(Trim(wizard.config.moreInfo)));
}

std::vector<std::string> StemsOf(const UploadWizard& wizard, std::string_view ending)
{
    std::vector<std::string> stems;
    for (const UploadFile& file : wizard.files)
        if (const std::string name = file.path.filename().native(); EndsWithName(name, ending))
            stems.push_back(BaseNameOf(name));
    return stems;
}

} // namespace

bool AddChosenFile(UploadWizard& wizard)
{
    const auto chosen = ChooseSourceFile(wizard.session.host, wizard.session.preferences);
    return chosen && AddSources(wizard, {*chosen});
}

bool AddChosenFolder(UploadWizard& wizard)
{
    const auto chosen = ChooseSourceFolder(wizard.session.host, wizard.session.preferences);
    return chosen && AddSources(wizard, {*chosen});
}

bool AddSources(UploadWizard& wizard, const std::vector<Path>& sources, Subfolders subfolders,
                const Path& package)
{
    Session& session = wizard.session;
    SourceReport report;
    report.unpacking = std::make_shared<WorkFolder>(InFolder(wizard.place, OnDisk::DirTempZip));
    SourceOptions options;
    options.leftOut = package;
    Status taken;
    for (const Path& source : sources)
        if (taken)
            taken = AddSource(session.host, session.machine, session.Folders(), ToolsOf(session),
                              source, wizard.work.Folder(), options, wizard.progress, subfolders,
                              report);
    NoteChangedSources(report);
    report.unpacking.reset();
    const bool listed = RefreshFiles(wizard);
    TellReport(session.host, report);
    return listed && report.failed == 0 && taken;
}

void RemoveFile(UploadWizard& wizard, std::size_t row)
{
    Host& host = wizard.session.host;
    if (row >= wizard.files.size())
        return host.Tell(Tone::Error, GetMsg(Msg::NoFileSelected));
    const Path file = wizard.files[row].path;
    if (!host.AskYesNo(GetMsg(Msg::AskRemoveFile) + TextOf(file.filename())))
        return;
    if (const auto status = DeleteFile(file); !status)
        TellFailure(host, GetMsg(Msg::ErrorRemovingFile) + TextOf(file), status.Error());
    RefreshFiles(wizard);
}

bool RefreshFiles(UploadWizard& wizard)
{
    if (!ListAll(wizard))
        return false;
    if (!wizard.FileNamed(LevelConfigPath({}).filename().native()).empty()) {
        TakeConfig(wizard);
        if (!ListAll(wizard))
            return false;
    }
    KeepDocument(wizard);
    return true;
}

std::vector<std::string> TomFiles(const UploadWizard& wizard)
{
    return StemsOf(wizard, OnDisk::EndingTomFile);
}

std::vector<std::string> WadPatterns(const UploadWizard& wizard)
{
    std::vector<std::string> patterns = Split(OnDisk::StandardWads, '|');
    for (std::string& stem : StemsOf(wizard, OnDisk::EndingWad))
        patterns.push_back(std::move(stem));
    for (std::string& pattern : patterns)
        pattern += OnDisk::EveryEndingOf;
    return patterns;
}

} // namespace kestrova
