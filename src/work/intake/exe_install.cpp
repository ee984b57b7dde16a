#include "intake/exe_install.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/files.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/installer_kind.h"
#include "formats/program_folder.h"
#include "formats/zip_directory.h"
#include "intake/draft_files.h"
#include "intake/exe_level.h"
#include "intake/file_names.h"
#include "intake/installer_leave.h"
#include "packages/package_tools.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/installers.h"
#include "words/intake.h"

#include <algorithm>
#include <span>

namespace kestrova
{

namespace
{

/// The stubs before the archives of self-extracting programs are smaller.
std::string Beginning(const Path& file)
{
    constexpr std::size_t most = std::size_t{1} << 20;
    std::string begin(most, '\0');
    platform::File handle;
    std::size_t got = 0;
    if (platform::File::OpenForRead(file, handle) ||
        handle.ReadAt(0, std::as_writable_bytes(std::span{begin}), got))
        return {};
    begin.resize(got);
    return begin;
}

Message KindOf(const Path& program)
{
    constexpr std::string_view sevenZip{"7z\xBC\xAF\x27\x1C"};
    constexpr std::string_view rar{"Rar!\x1A\x07"};
    if (!ReadZipDirectory(program).names.empty())
        return Msg::ExeOfZip;
    const std::string begin = Beginning(program);
    const bool packed =
        begin.find(sevenZip) != std::string::npos || begin.find(rar) != std::string::npos;
    return packed ? Msg::ExeOfArchive : Msg::ExeOfInstaller;
}

} // namespace

Path FindSetupExe(const std::vector<Path>& files)
{
    const std::vector<std::string> tools = Split(OnDisk::IntakeTools, '|');
    Path last;
    for (const Path& file : files) {
        const std::string name = file.filename().native();
        const bool passedOver =
            !EndsWithName(name, OnDisk::EndingExe) ||
            FindFolded(name, OnDisk::ReaderWord) != std::string::npos ||
            std::any_of(tools.begin(), tools.end(),
                        [&](const std::string& tool) { return EqualNames(name, tool); });
        if (passedOver)
            continue;
        last = file;
        if (EqualNames(name, OnDisk::SetupExeName))
            break;
    }
    return last;
}

std::string DetectInstaller(const Path& program, std::string& name)
{
    name = GetMsg(Msg::InstallerUnknown);
    platform::File file;
    if (platform::File::OpenForRead(program, file))
        return {};
    const auto read = [&](std::uint64_t offset, std::size_t size) {
        std::string bytes(size, '\0');
        std::size_t got = 0;
        if (file.ReadAt(offset, std::as_writable_bytes(std::span{bytes}), got))
            got = 0;
        bytes.resize(got);
        return bytes;
    };
    const std::uint64_t size = file.Facts().size;
    const std::string begin = read(0, InstallerBytes::beginSize);
    const std::string middle = read(InstallerBytes::middleOffset, InstallerBytes::middleSize);
    const std::string end = read(size - std::min<std::uint64_t>(size, InstallerBytes::endSize),
                                 InstallerBytes::endSize);
    const InstallerKind kind =
        DetectInstaller(program.filename().native(), InstallerBytes{size, begin, middle, end});
    name = GetMsg(kind.name);
    return std::string{kind.code};
}

bool MayBeInsideProgram(const Intake& intake)
{
    const std::vector<Path>& files = intake.draft.files;
    return !intake.draft.exeAsked && std::none_of(files.begin(), files.end(), [](const Path& file) {
        const std::string name = file.filename().native();
        return IsPackage(file) || EndsWithName(name, OnDisk::EndingTom) ||
               (EndsWithName(name, OnDisk::EndingTr4) && !EqualNames(name, OnDisk::TitleLevelName));
    });
}

namespace
{

/// The question before somebody else's program runs; True when it may.
bool MayInstall(Intake& intake)
{
    Session& session = intake.session;
    const std::string reach = WhatProgramsReach(session.Folders(), ToolsOf(session));
    const std::string paragraph = std::string{lineBreak} + std::string{lineBreak};
    if (!intake.draft.installer &&
        !session.host.AskYesNo(GetMsg(Msg::InstallerAsk, {lineBreak}) + paragraph + reach,
                               Consent::Explicit))
        return false;
    const std::string told = intake.draft.installer ? paragraph + reach : std::string{};
    session.host.Tell(Tone::Plain, GetMsg(Msg::InstallerStarts, {lineBreak}) + told);
    return true;
}

/// In the order in which the labels tell of it. False, with words, when not all came.
bool TakeInstalled(Intake& intake, const Path& temp)
{
    const auto tell = [&](Message label) {
        intake.progress.SetLabel(GetMsg(label));
        (void)intake.progress.Step();
    };
    const Path& folder = intake.draft.workFolder;
    tell(Msg::InstallerRemoving);
    Status status = DeleteMatching(folder, OnDisk::PatAllFiles);
    tell(Msg::InstallerTaking);
    const auto files = ListFiles(temp, OnDisk::PatAllFiles);
    if (status && !files)
        status = files.Error();
    for (std::size_t i = 0; status && i < files->size(); ++i) {
        intake.progress.SetBar(i, files->size());
        (void)intake.progress.Step(); // half a level is none, so it goes on to the end
        status = MoveFileOver((*files)[i], folder / (*files)[i].filename());
    }
    if (status)
        status = DeleteFile(folder / OnDisk::UninstallerName);
    tell(Msg::InstallerClearing);
    if (!status)
        TellFailure(intake.session.host, GetMsg(Msg::InstallerNotTaken), status.Error());
    return bool{status};
}

void ForgetExeFormat(Intake& intake)
{
    if (intake.draft.config)
        intake.draft.config->exeFormat.clear();
}

StepAnswer InstallLevelOf(Intake& intake, const std::string& code)
{
    Host& host = intake.session.host;
    bool taken = false;
    {
        const WorkFolder temp{InFolder(intake.session.programFolder, OnDisk::DirTempExe),
                              WorkFolder::Make::Now};
        const bool installed = InstallExeLevel(intake, {temp.Folder(), code});
        ForgetExeFormat(intake);
        taken = installed && TakeInstalled(intake, temp.Folder());
        if (!installed)
            host.Tell(Tone::Error, GetMsg(Msg::InstallerFailed));
        if (!taken)
            if (const auto gone = DeleteMatching(intake.draft.workFolder, OnDisk::PatExe); !gone)
                TellFailure(host, GetMsg(Msg::InstallerStays), gone.Error());
    }
    ClearProgress(intake.progress);
    const StepAnswer listed = AnswerTo(host, RefreshFiles(intake));
    return taken ? listed : StepAnswer::Refused;
}

} // namespace

StepAnswer RunExeInstall(Intake& intake, const std::string& code)
{
    if (!MayBeInsideProgram(intake))
        return StepAnswer::GoesOn;
    const Path program = FindSetupExe(intake.draft.files);
    if (program.empty())
        return StepAnswer::GoesOn;
    intake.draft.exeAsked = true;
    if (!intake.draft.installer && !intake.windows.installed) {
        const std::string words = GetMsg(Msg::ExeLevel, {TextOf(program.filename())});
        intake.session.host.Tell(Tone::Warning, words + ' ' + GetMsg(KindOf(program)));
        return StepAnswer::GoesOn;
    }
    return MayInstall(intake) ? InstallLevelOf(intake, code) : StepAnswer::GoesOn;
}

StepAnswer InstallFromProgram(Intake& intake)
{
    return RunExeInstall(intake, {});
}

} // namespace kestrova
