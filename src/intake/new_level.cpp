#include "intake/new_level.h"

#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "archive/storage.h"
#include "catalogue/message.h"
#include "core/removal.h"
#include "intake/folder_names.h"
#include "session/documents.h"
#include "swap/level_language.h"
#include "swap/marker.h"

#include <algorithm>
#include <utility>

namespace kestrova
{

NewLevel::NewLevel(Session& session, LevelRecord& record, LevelMode mode, ProgressScope& progress)
    : session_(session), record_(record), saved_(record), mode_(mode), progress_(progress)
{
}

NewLevel::~NewLevel()
{
    if (isTemp_)
        (void)ClearPlace(workFolder_); // the next use clears what stays
}

bool NewLevel::Open()
{
    FindFolder();
    if (mode_ == LevelMode::Properties && !OnCd())
        before_ = std::make_unique<FilesBefore>(filesFolder_, saved_);
    if (!session_.preferences.noDecompressInProperties) {
        Path temp;
        if (!UnstoreLevelFiles(session_, filesFolder_, temp, false)) {
            session_.host.Tell(Tone::Error, GetMsg(Msg::ErrorDecompressingFiles));
            return false;
        }
        if (!temp.empty()) {
            workFolder_ = temp;
            isTemp_ = true;
        }
    }
    const auto bytes = FolderSize(workFolder_);
    if (!bytes)
        return TellFolderNotRead(session_, bytes.Error());
    bytesBeforeInside_ = *bytes;
    if (!TakeSnapshot() || !RefreshFileList())
        return false;
    name = Trim(record_.levelName);
    note = Trim(record_.levelNote);
    const auto document = FindDocument(workFolder_, FileNameOf(Trim(record_.moreInfoFile)));
    if (!document)
        return TellFolderNotRead(session_, document.Error());
    if (*document)
        moreInfo = (*document)->filename().native();
    progress_.SetLabel(SizeText());
    return true;
}

void NewLevel::FindFolder()
{
    Path folder = LevelFolderOf(session_, record_.levelCode, true);
    if (session_.cdNotAvailable) {
        session_.host.Tell(Tone::Warning, GetMsg(Msg::CdMissingForFiles));
        folder = LevelHomeOf(session_, record_.levelCode);
    }
    filesFolder_ = ResolvePath(InFolder(folder, RowText(Msg::DirFiles)));
    workFolder_ = filesFolder_;
}

bool NewLevel::BeginChange()
{
    if (!before_)
        return true;
    const auto kept = before_->Keep([&] { return (void)progress_.Step(), true; });
    if (!kept)
        TellFailure(session_, GetMsg(Msg::EditNotBegun), kept.Error());
    return static_cast<bool>(kept);
}

void NewLevel::PutBack()
{
    if (!before_)
        return;
    if (const auto status = before_->PutBack(); !status)
        TellFailure(session_, GetMsg(Msg::EditNotPutBack), status.Error());
    before_.reset();
}

bool NewLevel::TakeSnapshot()
{
    const auto files = ListFiles(workFolder_, RowText(Msg::PatAll));
    if (!files)
        return TellFolderNotRead(session_, files.Error());
    for (const Path& file : *files) {
        const platform::FileFacts facts = platform::FactsOf(file);
        snapshot_[FoldCase(file.filename().native())] = {facts.size, facts.modifiedNs};
    }
    return true;
}

std::string NewLevel::FilesText() const
{
    return std::to_string(files_.size()) + GetMsg(Msg::CountOfFiles) + FormatSize(filesBytes_) +
           GetMsg(Msg::ClosingRound);
}

std::string NewLevel::SizeText() const
{
    const double files = saved_.filesSize;
    const double extras = saved_.extrasSize;
    return GetMsg(Msg::LevelSizeLine) + FormatSize(files) + " + " + FormatSize(extras) + " = " +
           FormatSize(files + extras);
}

void NewLevel::ClearProgress()
{
    progress_.SetLabel({});
    progress_.SetBar(0, 0);
}

/// Packages within packages count together, however deep they lie and however often the folder is
/// looked at again; otherwise a small one could fill the disk step by step.
UnpackLimits NewLevel::LimitsInside() const
{
    UnpackLimits limits;
    const std::uint64_t most = std::max(
        limits.alwaysAllowed, static_cast<std::uint64_t>(bytesBeforeInside_) * limits.mostTimes);
    limits.alwaysAllowed = most - std::min(most, inside_.bytes);
    limits.mostTimes = 0;
    limits.mostFiles -= std::min(limits.mostFiles, inside_.entries);
    return limits;
}

void NewLevel::UnpackInside()
{
    report_.names.reset(); // other steps were in the folder since
    const auto files = ListFiles(workFolder_, RowText(Msg::PatAll));
    if (!files)
        return; // the refresh that follows tells of it
    for (const Path& file : *files) {
        if (!IsPackage(file))
            continue;
        if (!BeginChange())
            return;
        const std::string folded = FoldCase(file.filename().native());
        report_.placed.erase(folded);
        report_.came = {};
        const auto status =
            CopyOrUnzipSource(session_, file, workFolder_,
                              {Replace::KeepBoth, LimitsInside(), namesPage}, progress_, report_);
        inside_.entries += report_.came.entries;
        inside_.bytes += report_.came.bytes;
        if (!status && status.Error().code == ErrorCode::Stopped) {
            report_.stopped = true;
            return; // it is still there for the next refresh
        }
        // What the archive held is nowhere else; what has just come in still is where it came from.
        const bool onlyHere = snapshot_.contains(folded);
        if (!status) {
            ++report_.failed;
            TellSourceFailure(session_,
                              GetMsg(Msg::ErrorDecompressingPackage) + TextOf(file.filename()) +
                                  std::string{lineBreak} +
                                  GetMsg(onlyHere ? Msg::PackageStays : Msg::PackageStillAtSource),
                              status.Error());
        }
        const bool replacedItself = report_.placed.contains(folded);
        if (!replacedItself && (status || !onlyHere)) {
            (void)platform::Unlink(file); // one that stays is met again by the next refresh
            if (report_.names != nullptr)
                report_.names->Remove(file.filename().native());
        }
    }
    ClearProgress();
}

bool NewLevel::RefreshFileList()
{
    if (!OnCd())
        UnpackInside();
    auto listed = ListFiles(workFolder_, RowText(Msg::PatAll));
    if (!listed)
        return TellFolderNotRead(session_, listed.Error());
    files_ = std::move(*listed);
    filesBytes_ = 0;
    bool moreInfoThere = false;
    for (const Path& file : files_) {
        filesBytes_ += static_cast<double>(FileSize(file));
        moreInfoThere = moreInfoThere || EqualNames(file.filename().native(), moreInfo);
    }
    if (!moreInfoThere)
        moreInfo.clear();
    LanguageFailure failure;
    std::string languageFile;
    canSetLanguage_ = !OnCd() && !files_.empty() && record_.levelCode != originalCode &&
                      CanSetMyLanguage(session_, workFolder_, failure, languageFile);
    return true;
}

SourceOptions NewLevel::Options() const
{
    SourceOptions options;
    options.namesAs = namesPage;
    return options;
}

/// What came out of packages, as it stands now.
void NewLevel::NoteUnpacked()
{
    packages_.insert(packages_.end(), report_.packages.begin(), report_.packages.end());
    if (!report_.namesAs.empty())
        namesReadAs_ = report_.namesAs;
    for (const Path& file : files_) {
        const std::string folded = FoldCase(file.filename().native());
        if (!report_.unpacked.contains(folded))
            continue;
        const platform::FileFacts facts = platform::FactsOf(file);
        unpacked_[folded] = {facts.size, facts.modifiedNs};
    }
}

/// What came out of packages goes, as far as nobody changed it since.
void NewLevel::DropUnpacked()
{
    for (const Path& file : files_) {
        const auto known = unpacked_.find(FoldCase(file.filename().native()));
        const platform::FileFacts facts = platform::FactsOf(file);
        if (known != unpacked_.end() && known->second.size == facts.size &&
            known->second.modifiedNs == facts.modifiedNs)
            (void)DeleteFile(file); // one that stays is asked for when its twin comes in
    }
    unpacked_.clear();
}

bool NewLevel::ReadNamesAs(const std::string& page)
{
    for (const Path& package : packages_)
        if (!FileExists(package)) {
            session_.host.Tell(Tone::Error, GetMsg(Msg::PackagesGone, {TextOf(package)}));
            return false;
        }
    namesPage = page;
    report_ = {};
    DropUnpacked();
    for (const Path& package : std::exchange(packages_, {}))
        if (!report_.stopped)
            AddFile(session_, package, workFolder_, Options(), progress_, report_);
    AfterSource();
    return report_.failed == 0 && !report_.stopped;
}

void NewLevel::AfterSource()
{
    inside_ = {};
    // A size that cannot be told leaves the earlier, smaller one, and so the narrower limit.
    bytesBeforeInside_ = FolderSize(workFolder_).ValueOr(bytesBeforeInside_);
    const bool listed = RefreshFileList();
    NoteUnpacked();
    TellReport(session_, report_);
    if (listed && mode_ == LevelMode::New) {
        ApplyLevelConfig();
        FillNameAndInfo();
    }
}

bool NewLevel::AddChosenFile()
{
    if (GuardLevelOnCd(session_, saved_))
        return false;
    const auto chosen = ChooseSourceFile(session_);
    return chosen && AddSources({*chosen});
}

bool NewLevel::AddChosenFolder()
{
    if (GuardLevelOnCd(session_, saved_))
        return false;
    const auto chosen = ChooseSourceFolder(session_);
    if (!chosen || !BeginChange())
        return false;
    report_ = {};
    AddFilesFromFolder(session_, *chosen, workFolder_, Options(), progress_, Subfolders::Ask,
                       report_);
    AfterSource();
    return report_.failed == 0;
}

bool NewLevel::AddSources(const std::vector<Path>& sources, Subfolders subfolders)
{
    if (GuardLevelOnCd(session_, saved_) || !BeginChange())
        return false;
    report_ = {};
    for (const Path& source : sources) {
        if (report_.stopped)
            break;
        if (FolderExists(source)) {
            AddFilesFromFolder(session_, source, workFolder_, Options(), progress_, subfolders,
                               report_);
        } else if (FileExists(source)) {
            AddFile(session_, source, workFolder_, Options(), progress_, report_);
        } else {
            ++report_.failed;
            session_.host.Tell(Tone::Error, GetMsg(Msg::SourceMissing, {TextOf(source)}));
            continue;
        }
        lastSource_ = source;
    }
    AfterSource();
    return report_.failed == 0 && !report_.stopped;
}

bool NewLevel::RemoveFile(const Path& file)
{
    if (GuardLevelOnCd(session_, saved_))
        return false;
    if (file.empty()) {
        session_.host.Tell(Tone::Error, GetMsg(Msg::NoFileSelected));
        return false;
    }
    if (!session_.host.AskYesNo(GetMsg(Msg::AskRemoveFile) + TextOf(file.filename())) ||
        !BeginChange())
        return false;
    const auto status = DeleteFile(file);
    if (!status)
        TellFailure(session_, GetMsg(Msg::ErrorRemovingFile) + TextOf(file), status.Error());
    RefreshFileList();
    return static_cast<bool>(status);
}

void NewLevel::Refresh()
{
    report_ = {};
    const bool listed = RefreshFileList();
    NoteUnpacked();
    TellReport(session_, report_);
    if (listed && mode_ == LevelMode::New)
        ApplyLevelConfig();
}

void NewLevel::OpenFile(const Path& file)
{
    Path shown = file;
    if (EndsWithName(file.filename().native(), RowText(Msg::ZlExtension)))
        shown = DecompressSingleFile(session_, file, true);
    if (shown.empty())
        return;
    if (const auto status = OpenOfLevel(session_, shown);
        !status && status.Error().code != ErrorCode::Stopped)
        TellFailure(session_, GetMsg(Msg::FileNotOpened, {TextOf(file.filename())}),
                    status.Error());
}

bool NewLevel::SetMyLanguage()
{
    const Operation running{session_};
    if (GuardLevelOnCd(session_, saved_) || !BeginChange())
        return false;
    LanguageFailure failure;
    // Files that become the level's only when the person accepts leave the game's folder alone.
    const bool installed = mode_ == LevelMode::Properties && !isTemp_ &&
                           CurrentLevelCode(session_) == record_.levelCode;
    const bool changed =
        ChangeLanguage(session_, workFolder_, LanguageChange::Mine, installed, failure);
    // The game's folder has the language already: from here on it belongs to the level.
    if (changed && installed && before_)
        before_ = std::make_unique<FilesBefore>(filesFolder_, saved_);
    if (changed)
        session_.host.Tell(Tone::Plain, GetMsg(Msg::LanguageSet));
    else if (!failure.declined)
        session_.host.Tell(Tone::Error, GetMsg(Msg::LanguageError) + failure.words, failure.reason);
    RefreshFileList();
    return changed;
}

void NewLevel::FillNameAndInfo()
{
    if (configApplied_)
        return;
    if (Trim(name).empty() && !lastSource_.empty())
        name = LevelNameFrom(lastSource_);
    if (!moreInfo.empty())
        return;
    // A word earlier in the list beats a file higher in the folder.
    for (const std::string& word : Split(RowText(Msg::MoreInfoWords), '|'))
        for (const Path& file : files_)
            if (FindFolded(file.filename().native(), word) != std::string::npos &&
                IsDocument(file)) {
                moreInfo = file.filename().native();
                return;
            }
}

bool NewLevel::LevelFilesChanged(const std::vector<Path>& now) const
{
    return now.size() != snapshot_.size() ||
           !std::all_of(now.begin(), now.end(), [&](const Path& file) { return IsAsOpened(file); });
}

bool NewLevel::IsAsOpened(const Path& file) const
{
    const auto known = snapshot_.find(FoldCase(file.filename().native()));
    const platform::FileFacts facts = platform::FactsOf(file);
    return known != snapshot_.end() && known->second.size == facts.size &&
           known->second.modifiedNs == facts.modifiedNs;
}

void NewLevel::RemoveTemp()
{
    if (!isTemp_)
        return;
    progress_.SetLabel(GetMsg(Msg::RemovingTempDirectory));
    (void)ClearPlace(workFolder_); // the next use clears what stays
    isTemp_ = false;
    ClearProgress();
}

void NewLevel::Cancel()
{
    record_ = saved_;
    RemoveTemp();
    cancelled_ = true;
}

} // namespace kestrova
