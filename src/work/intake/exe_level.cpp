#include "intake/exe_level.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/inside.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/size_words.h"
#include "core/text.h"
#include "editor/compile_tom_file.h"
#include "editor/enclosed_folder.h"
#include "editor/installed_files.h"
#include "formats/config_values.h"
#include "intake/drive_watch.h"
#include "intake/exe_install.h"
#include "intake/file_names.h"
#include "intake/folder_sources.h"
#include "intake/installer_leave.h"
#include "intake/told_at_home.h"
#include "originals/folder_handover.h"
#include "platform/files.h"
#include "platform/real_path.h"
#include "session/cleared_progress.h"
#include "session/operation.h"
#include "session/telling.h"
#include "swap/install.h"
#include "tools/program_launch.h"
#include "words/editor.h"
#include "words/installers.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace kestrova
{

namespace
{

bool HoldsLevel(const std::vector<Path>& files)
{
    return std::any_of(files.begin(), files.end(), [](const Path& file) {
        return EndsWithName(file.native(), OnDisk::EndingTom) ||
               EndsWithName(file.native(), OnDisk::EndingTr4);
    });
}

/// One run, from the original configuration to the files in the temporary folder.
class ExeInstall
{
public:
    ExeInstall(Intake& intake, const ExeLevel& level)
        : intake_(intake), session_(intake.session), host_(intake.session.host),
          progress_(intake.progress), folders_(intake.session.Folders()), level_(level),
          code_(level.code), handover_(intake.session.machine, folders_)
    {
    }

    bool Run()
    {
        Label(GetMsg(Msg::InstallerOriginal));
        if (!RestoreFast(session_) || !FindProgram())
            return false;
        DetectKind();
        if (!HandOver())
            return false;
        const bool done = Execute() && FindTarget() && TakeFiles();
        // The level's own files are to be read and cleared, whatever rights the program took.
        (void)TreeOf(intake_.draft.workFolder, {false, {}, true});
        const bool isBack = GiveBack();
        if (!done || !isBack || !IsLevel())
            return false;
        host_.Tell(Tone::Plain, GetMsg(Msg::InstallerFinished));
        return true;
    }

private:
    void Label(const std::string& text)
    {
        progress_.SetLabel(text);
        (void)progress_.Step();
    }

    bool FindProgram()
    {
        program_ = FindSetupExe(intake_.draft.files);
        if (program_.empty())
            host_.Tell(Tone::Error, GetMsg(Msg::InstallerNoSetup, {lineBreak}));
        return !program_.empty();
    }

    void DetectKind()
    {
        if (intake_.draft.installer) {
            code_ = intake_.draft.installer->code;
            return;
        }
        std::string name;
        if (code_.empty())
            code_ = DetectInstaller(program_, name);
        if (!name.empty() && !code_.empty())
            host_.Tell(Tone::Plain, GetMsg(Msg::InstallerDetected) + name);
    }

    bool HandOver()
    {
        const auto begun = handover_.Begin(progress_);
        if (!begun && begun.Error().code != ErrorCode::Stopped)
            TellFailure(host_, GetMsg(Msg::InstallerNotBegun), begun.Error());
        return bool{begun};
    }

    bool Execute()
    {
        if (const auto startable = MakeStartable(program_); !startable) {
            TellFailure(host_, GetMsg(Msg::InstallerNotStarted) + TextOf(program_),
                        startable.Error());
            return false;
        }
        Label(GetMsg(Msg::InstallerExecuting, {TextOf(program_.filename())}));
        const Path prefix = WinePrefixFor(folders_.trle);
        BoundedWork work{program_, {}, intake_.draft.workFolder, level_.bounds};
        work.enclosure = EnclosureOfTrle(folders_.trle, handover_.Before());
        work.enclosure->writable.push_back(intake_.draft.workFolder);
        if (intake_.draft.installer)
            work.enclosure->writable.push_back(intake_.draft.installer->folder);
        work.prefix = prefix;
        if (IsWindowsProgram(program_))
            drive_.emplace(prefix);
        ranFree_ = EncloserOf(ToolsOf(session_)).empty();
        // By the clock of the disks: the folder has just been handed over.
        begunNs_ = platform::FactsOf(LoanNotePath(folders_)).changedNs;
        ToolReport report;
        const auto ran = RunBounded(ToolsOf(session_), session_.machine, work, progress_, report);
        if (!ran) {
            if (report.trouble == ToolTrouble::NotStarted)
                TellFailure(host_, GetMsg(Msg::InstallerNotStarted) + TextOf(program_),
                            {ErrorCode::NotDone, {}, ran.Error().reason});
            else if (ran.Error().code != ErrorCode::Stopped)
                TellFailure(host_, GetMsg(Msg::InstallerEnded, {TextOf(program_.filename())}),
                            ran.Error());
            return false;
        }
        if (report.end.signal != 0 || report.end.code != 0)
            host_.Tell(Tone::Warning,
                       GetMsg(report.end.signal != 0 ? Msg::InstallerCrashed : Msg::InstallerCode,
                              {TextOf(program_.filename()),
                               std::to_string(report.end.signal != 0 ? report.end.signal
                                                                     : report.end.code)}),
                       {}, report.lastLines);
        if (report.end.signal != 0)
            return false;
        if (!code_.empty())
            host_.Tell(Tone::Plain, GetMsg(Msg::InstallerPressOk));
        return true;
    }

    bool FindTarget()
    {
        if (intake_.draft.installer)
            target_ = intake_.draft.installer->folder;
        else if (code_ == OnDisk::ExeTrle || code_ == OnDisk::ExeFlyDrive)
            target_ = folders_.trle;
        if (!target_.empty())
            return true;
        InstalledPlace place{host_, folders_};
        if (intake_.windows.installed)
            intake_.windows.installed(place);
        if (place.Answer())
            target_ = place.Answer()->folder;
        return place.Answer().has_value();
    }

    [[nodiscard]] bool IsTrle() const { return IsSameFolder(target_, folders_.trle); }

    bool TakeFiles()
    {
        const bool taken = IsTrle() ? TakeFromTrle() : TakeFromFolder();
        if (taken)
            TellWrittenElsewhere();
        return taken;
    }

    bool TakeFromFolder()
    {
        const auto size = FolderSize(target_);
        if (!size)
            return TellFolderNotRead(host_, size.Error());
        if (!IsWithinBounds(*size))
            return false;
        SourceReport report;
        const Status taken = AddFilesFromFolder(
            host_, session_.machine, folders_, ToolsOf(session_), target_, level_.tempFolder,
            intake_.draft.Options(), progress_,
            intake_.draft.installer ? Subfolders::Take : Subfolders::Ask, report);
        return taken && report.failed == 0;
    }

    /// A file may say that it is larger than what was written into it, and its copy is that large.
    bool IsWithinBounds(double bytes)
    {
        const auto most = static_cast<double>(level_.bounds.mostTaken);
        if (bytes > most)
            host_.Tell(Tone::Error,
                       GetMsg(Msg::InstallerTooMuch, {SizeInWords(bytes), SizeInWords(most)}));
        return bytes <= most;
    }

    bool TakeFromTrle()
    {
        Label(GetMsg(Msg::Comparing));
        const auto step = [&] { return progress_.Step(); };
        const auto now = handover_.Now(step);
        if (!now)
            return NotRead(now.Error());
        const auto compared =
            CompareWithBackup(folders_, session_.preferences.fullBackup, *now, step);
        if (!compared)
            return NotRead(compared.Error());
        Label(GetMsg(Msg::InstallerCopying));
        const auto written = WrittenSince(*compared, handover_.Before(), *now);
        if (!IsWithinBounds(std::accumulate(written.begin(), written.end(), 0.0,
                                            [](double sum, const ComparedFile& file) {
                                                return sum + static_cast<double>(file.sizeAfter);
                                            })))
            return false;
        for (std::size_t i = 0; i < written.size(); ++i) {
            progress_.SetBar(i, written.size());
            if (!TakeFile(written[i].after))
                return false;
        }
        NoteWhatStays(*now);
        TellWhatGoes(*compared, *now);
        if (!DropLitter())
            return false;
        if (!session_.preferences.fullBackup)
            host_.Tell(Tone::Plain, GetMsg(Msg::InstallerCompact));
        return true;
    }

    bool NotRead(const Failure& failure)
    {
        if (failure.code == ErrorCode::Stopped)
            return false;
        return TellFolderNotRead(host_, failure);
    }

    bool TakeFile(const Path& file)
    {
        CopyOptions options{Verify::Content};
        bool goes = true;
        options.progress = [&](std::uint64_t) { return goes = progress_.Step(); };
        const auto copied = CopyFileOver(file, level_.tempFolder / file.filename(), options);
        if (!copied && goes)
            TellFailure(host_, GetMsg(Msg::InstallerNotCopied, {TextOf(file)}), copied.Error());
        return bool{copied} && goes;
    }

    /// With a compact backup new waves are left to the Level Editor's folder.
    void NoteWhatStays(const StandingTree& now)
    {
        if (session_.preferences.fullBackup)
            return;
        const StandingFiles before = FilesByName(handover_.Before());
        for (const StandingFile& file : now.files)
            if (!before.contains(file.name.native()) &&
                EndsWithName(file.name.native(), OnDisk::EndingWave))
                stays_.insert(file.name);
    }

    /// What the installer wrote into the folder and the level does not get.
    void TellWhatGoes(const std::vector<ComparedFile>& compared, const StandingTree& now)
    {
        std::set<Path> told(stays_.begin(), stays_.end());
        for (const ComparedFile& file : compared)
            told.insert(file.name);
        std::vector<std::string> names;
        const StandingFiles before = FilesByName(handover_.Before());
        for (const StandingFile& file : now.files) {
            const auto stood = before.find(file.name.native());
            const bool isWritten = stood == before.end() || !IsUntouched(*stood->second, file);
            if (isWritten && !told.contains(file.name))
                names.push_back(TextOf(file.name));
        }
        if (!names.empty())
            host_.Tell(Tone::Plain, GetMsg(Msg::InstallerLeftOut, {ShownNames(names)}));
    }

    bool DropLitter()
    {
        Status status;
        for (const std::string& pattern : Split(OnDisk::InstallerLitter, '|'))
            if (status)
                status = DeleteMatching(level_.tempFolder, pattern);
        const auto inis = ListFiles(level_.tempFolder, OnDisk::PatIni);
        if (status && !inis)
            status = inis.Error();
        for (std::size_t i = 0; status && i < inis->size(); ++i) {
            const Path& ini = (*inis)[i];
            status = DeleteFile(ini);
            if (status)
                status = DeleteFile(ini.parent_path() / (StripExtension(ini.filename().native()) +
                                                         std::string{OnDisk::EndingDat}));
        }
        return DoneOrTold(host_, status);
    }

    void TellWrittenElsewhere()
    {
        const std::vector<Path> known{folders_.trle, ResolvePath(target_)};
        const auto names = drive_ ? drive_->Written(known) : std::vector<std::string>{};
        if (!names.empty())
            host_.Tell(Tone::Plain, GetMsg(Msg::InstallerElsewhere, {ShownNames(names)}));
        if (ranFree_)
            TellChangedAtHome(host_, progress_, begunNs_,
                              {known.front(), known.back(), folders_.program,
                               intake_.draft.workFolder, WinePrefixFor(folders_.trle)});
    }

    bool GiveBack()
    {
        const auto back = handover_.GiveBack(stays_);
        if (!back)
            TellFailure(host_, GetMsg(Msg::InstallerNotReturned), back.Error());
        ClearProgress(progress_);
        return bool{back};
    }

    bool IsLevel()
    {
        const auto files = ListFiles(level_.tempFolder, OnDisk::PatAll);
        if (!files)
            return TellFolderNotRead(host_, files.Error());
        if (!HoldsLevel(*files))
            host_.Tell(Tone::Error, GetMsg(Msg::InstallerNoLevel));
        return HoldsLevel(*files);
    }

    Intake& intake_;
    Session& session_;
    Host& host_;
    ProgressScope& progress_;
    Folders folders_;
    const ExeLevel& level_;
    std::string code_;
    FolderHandover handover_;
    Path program_;
    Path target_;
    std::optional<DriveWatch> drive_;
    std::set<Path> stays_;
    bool ranFree_ = false;
    std::int64_t begunNs_ = 0;
};

} // namespace

RunBounds ExeLevel::InstallerBounds()
{
    RunBounds bounds;
    bounds.mostTaken = UINT64_C(4) << 30;
    return bounds;
}

bool InstallExeLevel(Intake& intake, const ExeLevel& level)
{
    const Operation operation{intake.session};
    const Path program = FindSetupExe(intake.draft.files);
    return (program.empty() || MayRunInstaller(intake, program)) && MayLend(intake.session) &&
           ExeInstall{intake, level}.Run();
}

} // namespace kestrova
