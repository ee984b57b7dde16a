#include "app/first_start.h"

#include "app/file_names.h"
#include "app/file_types.h"
#include "app/practice_library.h"
#include "app/start_places.h"
#include "archive/level_sizes.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "editor/find_trle.h"
#include "editor/folder_test.h"
#include "editor/usual_places.h"
#include "formats/program_folder.h"
#include "levels/original_level.h"
#include "session/operation.h"
#include "session/preferences_file.h"
#include "session/telling.h"
#include "swap/backup.h"
#include "swap/backup_state.h"
#include "upkeep/load_archive.h"
#include "upkeep/new_archive.h"
#include "words/editor.h"
#include "words/first_start.h"
#include "words/upkeep.h"

namespace kestrova
{

namespace
{

constexpr std::size_t trleFieldSize = 256;

Path NoteFile(const Path& programFolder)
{
    return InFolder(programFolder, OnDisk::FragStartNote);
}

/// A note that is damaged is none: the page proposes anew.
std::optional<StartNote> ReadStartNote(const Path& programFolder)
{
    const auto bytes = ReadFileIfThere(NoteFile(programFolder), longestStartNote);
    if (!bytes || !*bytes)
        return {};
    const auto note = ParseStartNote(**bytes);
    return note ? std::optional{*note} : std::nullopt;
}

bool IsWhole(const Path& trle)
{
    const auto lacks = WhatTrleLacks(trle);
    return lacks && lacks->empty();
}

/// What a start that did not come to its end has taken is given back at the end of its life.
class Attempt
{
public:
    explicit Attempt(Session& session)
        : session_(session), trle_(session.preferences.trlePath),
          archive_(session.preferences.archivePath)
    {
    }
    ~Attempt()
    {
        if (kept_)
            return;
        const Path taken = session_.TrleFolder();
        session_.preferences.trlePath = trle_;
        session_.preferences.archivePath = archive_;
        session_.archive = {};
        if (!taken.empty() && taken != session_.TrleFolder())
            session_.locks.Release(taken);
        session_.list.Refresh();
    }
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;
    bool Keep() { return kept_ = true; }

private:
    Session& session_;
    std::string trle_;
    std::string archive_;
    bool kept_ = false;
};

} // namespace

bool FirstStart::IsDue(const Session& session)
{
    const bool nothingKnown =
        Trim(session.preferences.trlePath).empty() && Trim(session.preferences.archivePath).empty();
    const auto note = ReadStartNote(session.programFolder);
    if (!note || note->practice || nothingKnown)
        return note || nothingKnown;
    // The terminal, or the menus, may have ended what the page began.
    const bool done = IsWhole(session.TrleFolder()) && !BackupIsAway(session.Folders()) &&
                      FileExists(session.RememberedArchive());
    if (done)
        (void)DeleteFile(NoteFile(session.programFolder)); // looked at again by the next start
    return !done;
}

FirstStart::FirstStart(Session& session, const Path& archive)
    : session_(session), offersTypes_(OffersFileTypes(session)),
      found_(FoundEditors(session.Folders()))
{
    choices_ = ReadStartNote(session.programFolder).value_or(StartNote{});
    choices_.practice = false;
    if (IsWhole(session.TrleFolder()))
        choices_.trle = session.TrleFolder().native();
    if (choices_.trle.empty() && !found_.empty())
        choices_.trle = found_.front().native();
    if (!archive.empty())
        choices_.levels = archive.native();
    if (choices_.levels.empty())
        choices_.levels = ProposedLevels(session).native();
    JudgeAnew();
}

void FirstStart::JudgeAnew()
{
    JudgeTrle();
    JudgeLevels();
}

void FirstStart::JudgeTrle()
{
    const Path folder = PlaceFrom(choices_.trle);
    measuring_.reset();
    if (folder.empty()) {
        trle_ = {false, GetMsg(Msg::StartTrleNone)};
        return;
    }
    const auto lacks = WhatTrleLacks(folder);
    if (!lacks)
        trle_ = {false, GetMsg(Msg::StartTrleNotRead, {lacks.Error().subject})};
    else if (!lacks->empty())
        trle_ = {false, *lacks};
    else if (ToWindows1252(folder.native()).size() > trleFieldSize)
        trle_ = {false, GetMsg(Msg::StartTrleTooLong)};
    else {
        Folders folders = session_.Folders();
        folders.trle = folder;
        const bool hasLevel = FileExists(folders.Marker());
        trle_ = {true, GetMsg(hasLevel ? Msg::StartTrleLevel : Msg::StartTrleWhole)};
        measuring_ = std::make_unique<BackupMeasuring>(folder);
    }
}

void FirstStart::JudgeLevels()
{
    const Path place = PlaceFrom(choices_.levels);
    there_.clear();
    if (place.empty()) {
        levels_ = {false, GetMsg(Msg::StartLevelsNone)};
        return;
    }
    if (NamesArchive(place)) {
        const bool isThere = FileExists(place);
        levels_ = {isThere, GetMsg(isThere ? Msg::StartArchiveOpens : Msg::StartArchiveGone)};
        return;
    }
    const auto files = ListFiles(place, OnDisk::PatAll).ValueOr({});
    const auto folders = ListSubfolders(place).ValueOr({});
    const bool filled = !files.empty() || !folders.empty();
    if (filled || FolderExists(place))
        there_ = ArchiveAt(session_, place);
    const Path folder = filled ? DefaultArchiveFolder(place) : place;
    if (FileExists(place))
        levels_ = {false, GetMsg(Msg::StartLevelsFile)};
    else if (ToWindows1252(folder.native()).size() > longestArchiveFolder)
        levels_ = {false, GetMsg(Msg::StartLevelsTooLong)};
    else if (!there_.empty())
        levels_ = {true, GetMsg(Msg::StartArchiveThere, {TextOf(there_)})};
    else if (filled)
        levels_ = {true, GetMsg(Msg::StartLevelsFilled, {TextOf(folder.filename())})};
    else
        levels_ = {true, GetMsg(Msg::StartLevelsNew)};
}

FirstStart::Verdict FirstStart::OfRoom() const
{
    const auto free = session_.machine.FreeSpace(session_.programFolder);
    if (!free)
        return {true, {}};
    const double bytes = static_cast<double>(*free);
    const double need = BackupNeed(!choices_.compact);
    const std::string where = TextOf(session_.programFolder);
    // A copy that is there already is not made again.
    if (bytes >= need || !BackupIsAway(session_.Folders()))
        return {true, GetMsg(Msg::StartRoom, {SizeInWords(bytes), where})};
    return {false, GetMsg(Msg::StartNoRoom, {SizeInWords(bytes), where, SizeInWords(need)})};
}

std::optional<BackupSizes> FirstStart::Sizes() const
{
    return measuring_ == nullptr ? std::nullopt : measuring_->Sizes();
}

void FirstStart::Note() const
{
    // Without it the next start only proposes anew.
    (void)WriteWholeFile(NoteFile(session_.programFolder), FormatStartNote(choices_), false);
}

void FirstStart::SetTrle(const std::string& typed)
{
    choices_.trle = typed;
    original_ = false; // it was said of another folder
    JudgeTrle();
    Note();
}

void FirstStart::SetLevels(const std::string& typed)
{
    choices_.levels = typed;
    JudgeLevels();
    Note();
}

void FirstStart::SetCompact(bool compact)
{
    choices_.compact = compact;
    Note();
}

void FirstStart::SetFileTypes(bool wanted)
{
    choices_.fileTypes = wanted;
    Note();
}

void FirstStart::BrowseTrle()
{
    if (const auto chosen =
            session_.host.ChooseFolder(GetMsg(Msg::ChooseTrleFolder), PlaceFrom(choices_.trle)))
        SetTrle(chosen->native());
}

void FirstStart::BrowseLevels()
{
    if (const auto chosen = session_.host.ChooseFolder(GetMsg(Msg::SelectArchiveFolder),
                                                       PlaceFrom(choices_.levels)))
        SetLevels(chosen->native());
}

void FirstStart::BrowseArchive()
{
    if (const auto chosen = session_.host.ChooseOpenFile(
            GetMsg(Msg::LoadArchiveTitle), GetMsg(Msg::LoadArchiveFilter), session_.programFolder))
        SetLevels(chosen->native());
}

bool FirstStart::TakeEditor()
{
    TrleFinder finder{session_};
    return finder.Take(PlaceFrom(choices_.trle)) && finder.Accept();
}

bool FirstStart::MakeCopy()
{
    const BackupForm form = choices_.compact ? BackupForm::Compact : BackupForm::Full;
    return MakeTrleBackup(session_, false, {form, original_}) ||
           session_.host.AskYesNo(GetMsg(Msg::AskWithoutCopy, {lineBreak}));
}

bool FirstStart::OpenLevels()
{
    const auto built = EnsureLevel0Folder(session_.Folders());
    if (!built) {
        TellNoLevel0(session_.host, session_.Folders(), built.Error());
        return false;
    }
    const Path place = PlaceFrom(choices_.levels);
    const bool opensThere =
        !there_.empty() &&
        session_.host.AskYesNo(GetMsg(Msg::AskOpenThere, {TextOf(there_), lineBreak}),
                               Consent::YesKeeps);
    if (!NamesArchive(place) && !opensThere)
        return CreateArchive(session_, place);
    if (!ReadArchive(session_, opensThere ? there_ : place))
        return false;
    if (*built)
        RefreshLevelSizes(session_, originalCode);
    return true;
}

bool FirstStart::Begin()
{
    const Operation operation{session_};
    JudgeLevels(); // another program may have been there since
    Note();
    Attempt attempt{session_};
    return CanStart() && TakeEditor() && MakeCopy() && OpenLevels() && Finish() && attempt.Keep();
}

bool FirstStart::BeginPractice()
{
    const Operation operation{session_};
    choices_.practice = true;
    Note();
    choices_.practice = false;
    Attempt attempt{session_};
    return MakePracticeLibrary(session_) && Finish() && attempt.Keep();
}

bool FirstStart::Finish()
{
    if (!DoneOrTold(session_.host, SavePreferencesNow(session_.Folders(), session_.preferences,
                                                      session_.settings)))
        return false;
    if (offersTypes_ && choices_.fileTypes)
        TeachFileTypes(session_);
    (void)DeleteFile(NoteFile(session_.programFolder)); // one that stays only shows the page again
    return true;
}

void FirstStart::GiveUp()
{
    TrleFinder{session_}.GiveUp();
}

} // namespace kestrova
