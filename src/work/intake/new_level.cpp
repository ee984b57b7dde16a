#include "intake/new_level.h"

#include "archive/level_document.h"
#include "archive/level_folders.h"
#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "core/removal.h"
#include "formats/level_folder.h"
#include "history/standing.h"
#include "intake/file_names.h"
#include "intake/setup_programs.h"
#include "intake/source_choice.h"
#include "levels/level_language.h"
#include "session/documents.h"
#include "storage/storage.h"
#include "storage/unstore.h"
#include "words/common.h"
#include "words/intake.h"
#include "words/levels.h"
#include "words/swap.h"

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
    const auto folder = LevelFolderOf(session_, record_.levelCode);
    if (!folder)
        session_.host.Tell(Tone::Warning, GetMsg(Msg::CdMissingForFiles));
    filesFolder_ = ResolvePath(
        InFolder(folder ? *folder : LevelHomeOf(session_, record_.levelCode), OnDisk::DirFiles));
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
    const auto files = ListFiles(workFolder_, OnDisk::PatAll);
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

bool NewLevel::RefreshFileList()
{
    if (!OnCd())
        UnpackInside();
    report_.unpacking.reset();
    auto listed = ListFiles(workFolder_, OnDisk::PatAll);
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

void NewLevel::AfterSource()
{
    inside_ = {};
    // A size that cannot be told leaves the earlier, smaller one, and so the narrower limit.
    bytesBeforeInside_ = FolderSize(workFolder_).ValueOr(bytesBeforeInside_);
    NoteChangedSources(report_);
    const bool listed = RefreshFileList();
    NoteUnpacked();
    TellReport(session_, report_);
    if (listed && mode_ == LevelMode::New) {
        ApplyLevelConfig();
        TellOfSetupExe();
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
    return report_.failed == 0 && !report_.stopped;
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
            const bool isThere = platform::FactsOf(source).kind != platform::FileKind::Missing;
            session_.host.Tell(Tone::Error, GetMsg(isThere ? Msg::SourceNoFile : Msg::SourceMissing,
                                                   {TextOf(source)}));
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
    if (listed && mode_ == LevelMode::New) {
        ApplyLevelConfig();
        TellOfSetupExe();
    }
}

void NewLevel::OpenFile(const Path& file)
{
    Path shown = file;
    if (EndsWithName(file.filename().native(), OnDisk::ZlExtension))
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

void NewLevel::TellOfSetupExe()
{
    const bool hasLevel = std::any_of(files_.begin(), files_.end(), [](const Path& file) {
        const std::string own = file.filename().native();
        return IsPackage(file) || EndsWithName(own, OnDisk::EndingTom) ||
               (EndsWithName(own, OnDisk::EndingTr4) && !EqualNames(own, OnDisk::TitleLevelName));
    });
    const Path program = hasLevel || exeTold_ ? Path{} : FindSetupExe(files_);
    if (program.empty())
        return;
    exeTold_ = true;
    session_.host.Tell(Tone::Warning, WordsOfSetupExe(program));
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
    for (const std::string& word : Split(OnDisk::MoreInfoWords, '|'))
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

bool NewLevel::HasOtherFiles() const
{
    const auto now = ListFiles(workFolder_, OnDisk::PatAll);
    return !now || LevelFilesChanged(*now);
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
