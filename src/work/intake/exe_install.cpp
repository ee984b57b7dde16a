#include "intake/exe_install.h"

#include "core/files.h"
#include "core/text.h"
#include "formats/zip_directory.h"
#include "intake/file_names.h"
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

bool MayBeInsideProgram(const Intake& intake)
{
    const std::vector<Path>& files = intake.draft.files;
    return !intake.draft.exeAsked && std::none_of(files.begin(), files.end(), [](const Path& file) {
        const std::string name = file.filename().native();
        return IsPackage(file) || EndsWithName(name, OnDisk::EndingTom) ||
               (EndsWithName(name, OnDisk::EndingTr4) && !EqualNames(name, OnDisk::TitleLevelName));
    });
}

StepAnswer RunExeInstall(Intake& intake, const std::string& code)
{
    if (!MayBeInsideProgram(intake))
        return StepAnswer::GoesOn;
    const Path program = FindSetupExe(intake.draft.files);
    if (program.empty())
        return StepAnswer::GoesOn;
    intake.draft.exeAsked = true;
    std::string words = GetMsg(Msg::ExeLevel, {TextOf(program.filename())});
    if (code.empty())
        words += ' ' + GetMsg(KindOf(program));
    intake.session.host.Tell(Tone::Warning, words);
    return StepAnswer::GoesOn;
}

StepAnswer InstallFromProgram(Intake& intake)
{
    return RunExeInstall(intake, {});
}

} // namespace kestrova
