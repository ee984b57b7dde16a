#include "editor/setup_run.h"

#include "core/leftovers.h"
#include "core/look.h"
#include "core/size_words.h"
#include "core/text.h"
#include "editor/failure_words.h"
#include "editor/folder_test.h"
#include "editor/setup_content.h"
#include "editor/setup_list_check.h"
#include "editor/setup_names.h"
#include "editor/setup_shortcuts.h"
#include "editor/setup_source.h"
#include "editor/setup_target.h"
#include "editor/trle_registry.h"
#include "formats/trle_folder.h"
#include "session/cleared_progress.h"
#include "session/operation.h"
#include "session/telling.h"
#include "words/level_setup.h"

namespace kestrova
{

namespace
{

/// What the setup is said to need of the disk that the program works on.
constexpr std::uint64_t setupRoom = UINT64_C(250) << 20;

std::string RoomOf(const Path& place, std::uint64_t free, std::uint64_t needed)
{
    return GetMsg(Msg::SetupRoomOf, {TextOf(place), SizeInWords(static_cast<double>(free)),
                                     SizeInWords(static_cast<double>(needed))});
}

} // namespace

struct LevelEditorSetup::Phase {
    bool (LevelEditorSetup::*run)();
    bool behindPlacing; ///< it has its turn too when a setup that was killed goes on
};

const LevelEditorSetup::Phase LevelEditorSetup::phases[] = {
    {&LevelEditorSetup::FindRoom, false},      {&LevelEditorSetup::GiveNotice, false},
    {&LevelEditorSetup::Unzip, false},         {&LevelEditorSetup::CheckSource, false},
    {&LevelEditorSetup::Copy, false},          {&LevelEditorSetup::LiftReadOnly, false},
    {&LevelEditorSetup::MakeLinks, true},      {&LevelEditorSetup::TakeLanguage, false},
    {&LevelEditorSetup::ConvertSounds, false}, {&LevelEditorSetup::CompileLevels, false},
    {&LevelEditorSetup::PutThere, true},       {&LevelEditorSetup::RegisterIt, true},
    {&LevelEditorSetup::CheckTarget, true},    {&LevelEditorSetup::Finish, true},
};

bool LevelEditorSetup::Run()
{
    parts_.progress.AllowStop();
    bool done = Prepare();
    for (const Phase& phase : phases) {
        if (!done)
            break;
        if (goesOn_ && !phase.behindPlacing)
            continue;
        done = parts_.progress.Step() ? (this->*phase.run)()
                                      : End(MakeFailure(ErrorCode::Stopped, {}));
    }
    work_.reset();
    linksWork_.reset();
    if (!done && !parent_.empty())
        (void)platform::RemoveFolder(parent_); // unless something stands in it
    if (done) // one that stays says of a whole folder that it is to be finished, which does no harm
        (void)ForgetSetup(parts_.folders);
    return done;
}

/// Tells why it ends. Answers False.
bool LevelEditorSetup::End(const Failure& failure)
{
    if (failure.code == ErrorCode::Stopped)
        parts_.host.Tell(Tone::Plain, GetMsg(Msg::SetupStopped));
    else if (!failure.sentence.empty())
        TellFailure(parts_.host, failure);
    else
        parts_.host.Tell(Tone::Error,
                         GetMsg(Msg::SetupError) + failure.subject + ' ' + failure.reason, {},
                         failure.details);
    return false;
}

/// What failed is told, and the person says whether the setup goes on without it.
bool LevelEditorSetup::Try(const Status& status)
{
    if (status)
        return true;
    End(status.Error());
    return status.Error().code != ErrorCode::Stopped &&
           parts_.host.AskYesNo(GetMsg(Msg::SetupContinue));
}

bool LevelEditorSetup::MoveTo(const Path& target)
{
    target_ = target;
    const Path parent = target.parent_path();
    const auto isThere = IsFolder(parent);
    if (!isThere)
        return End(isThere.Error());
    if (!*isThere)
        parent_ = parent;
    auto made = MakeFolders(parent);
    if (made) {
        ClearLeftoversIn(parent); // what stays holds up nothing
        work_.emplace(FreshPlaceIn(parent), WorkFolder::Make::Now,
                      [this] { return parts_.progress.Step(), true; });
        made = MakeFolders(work_->Folder());
    }
    if (made)
        return true;
    return End(InWords(made.Error().code, GetMsg(Msg::SetupNotPrepared, {TextOf(parent)}),
                       made.Error().reason));
}

bool LevelEditorSetup::Prepare()
{
    if (wish_.fromZips && wish_.zips.empty())
        return End(InWords(ErrorCode::Refused, GetMsg(Msg::SetupNoZips)));
    if (const auto note = UnfinishedSetupAt(parts_.folders, wish_.target)) {
        goesOn_ = true;
        target_ = note->target;
        ClearLeftoversIn(target_.parent_path()); // what stays holds up nothing
        if (const SetupLanguage* language = FindSetupLanguage(note->language))
            wish_.language = language;
        parts_.host.Tell(Tone::Plain, GetMsg(Msg::SetupGoesOn, {TextOf(target_)}));
        return true;
    }
    const auto target = TargetOf(wish_, parts_.folders);
    if (!target)
        return End(target.Error());
    target_ = *target;
    return true;
}

bool LevelEditorSetup::HasRoom(const Path& place) const
{
    // Where nobody can tell, the copying will.
    return parts_.machine.FreeSpace(place).ValueOr(UINT64_MAX) >= needed_;
}

bool LevelEditorSetup::FindRoom()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupVerifySize));
    const auto needed = RoomForSetup(parts_, wish_);
    if (!needed && !Try(needed.Error()))
        return false;
    needed_ = needed ? *needed : 0;
    if (HasRoom(target_))
        return MoveTo(target_);
    const std::string room = RoomOf(target_, parts_.machine.FreeSpace(target_).ValueOr(0), needed_);
    if (!parts_.host.AskYesNo(GetMsg(Msg::SetupOtherDrive, {lineBreak}) + std::string{lineBreak} +
                                  room,
                              Consent::Explicit)) {
        parts_.host.Tell(Tone::Error, GetMsg(Msg::SetupFailed));
        return false;
    }
    const Drive drive = FindLargestDrive(parts_.machine);
    if (drive.folder.empty() || drive.free < needed_) {
        parts_.host.Tell(Tone::Error, GetMsg(Msg::SetupNoDrive) +
                                          FormatSize(static_cast<double>(needed_)) + ')');
        return false;
    }
    wish_.target = drive.folder / OnDisk::SetupMaker / OnDisk::LastPartTrle;
    const auto target = TargetOf(wish_, parts_.folders);
    return target ? MoveTo(*target) : End(target.Error());
}

bool LevelEditorSetup::GiveNotice()
{
    parts_.host.Tell(Tone::Plain, GetMsg(Msg::SetupNotice, {lineBreak, lineBreak}),
                     GetMsg(Msg::SetupWhere, {TextOf(target_)}));
    return true;
}

bool LevelEditorSetup::Unzip()
{
    if (!wish_.fromZips)
        return true;
    const Path place = work_->Folder() / OnDisk::SetupUnpacked;
    if (const auto made = MakeFolder(place); !made)
        return End(made.Error());
    const auto done = UnpackSetup(parts_, wish_.zips, place);
    return done || End(done.Error());
}

bool LevelEditorSetup::AskAboutList(const Path& folder, bool isTarget)
{
    const auto check =
        CheckSetupFiles(folder, isTarget ? SetupState::Installed : SetupState::Source,
                        [this] { return parts_.progress.Step(); });
    if (!check)
        return Try(check.Error());
    if (isTarget)
        parts_.progress.SetLabel(
            GetMsg(Msg::SetupCheckingTarget) +
            (check->missing.empty()
                 ? GetMsg(Msg::SetupTargetFine)
                 : GetMsg(Msg::SetupTargetErrors) + std::to_string(check->missing.size())));
    const std::string question = SetupListQuestion(*check, folder);
    return question.empty() || parts_.host.AskYesNo(question);
}

bool LevelEditorSetup::CheckSource()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupCheckingSource));
    const Path from =
        wish_.fromZips ? work_->Folder() / OnDisk::SetupUnpacked : ResolvePath(wish_.folder);
    source_ = SetupTreeIn(from);
    if (source_.empty())
        return End(InWords(
            ErrorCode::Missing,
            GetMsg(Msg::SetupNotTrle,
                   {wish_.fromZips ? TextOf(wish_.zips.front().filename()) : TextOf(from)})));
    return AskAboutList(source_, false);
}

bool LevelEditorSetup::Copy()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupCopying) +
                             TextOf(wish_.fromZips ? wish_.zips.front().filename() : source_));
    const Path tree = work_->Folder() / OnDisk::LastPartTrle;
    Status copied;
    if (!wish_.fromZips)
        copied = CopySetup(parts_, source_, tree);
    else if (const auto failure = platform::Rename(source_, tree))
        copied = InWords(ErrorCode::CannotWrite,
                         GetMsg(Msg::SetupCopyFailed, {TextOf(source_)}) + TextOf(tree) + ']',
                         failure.message());
    source_ = tree;
    return copied || End(copied.Error());
}

bool LevelEditorSetup::LiftReadOnly()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupFlags) + TextOf(target_));
    return Try(AllowWriting(parts_, source_)) && Try(AllowStarting(source_));
}

/// They are written where nothing shows them, and take their place with the tree.
bool LevelEditorSetup::MakeLinks()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupLinks));
    if (goesOn_)
        source_ = target_;
    const Path folder = ShortcutsFolder();
    Status made = MakeFolders(folder);
    if (!made)
        made = InWords(made.Error().code, GetMsg(Msg::SetupNoLinkFolder) + TextOf(folder),
                       made.Error().reason);
    if (made) {
        ClearLeftoversIn(folder);
        linksWork_.emplace(FreshPlaceIn(folder), WorkFolder::Make::Now);
        links_ = linksWork_->Folder();
        made = WriteShortcuts(
            ShortcutsFor(parts_.converter.tools, source_, target_, *wish_.language), links_);
    }
    if (!made)
        links_.clear();
    return Try(made);
}

bool LevelEditorSetup::TakeLanguage()
{
    const SetupLanguage& language = *wish_.language;
    return Try(MakeLoadScreen(source_, language)) && Try(RemoveOtherScreens(source_, language)) &&
           Try(RemoveOtherManuals(source_, language)) && Try(CopyLanguageFile(source_, language)) &&
           Try(CopyScript(source_));
}

bool LevelEditorSetup::ConvertSounds()
{
    return Try(DecodeMusic(parts_, InFolder(source_, OnDisk::DirAudio), AudioKind::Adpcm,
                           Msg::SetupMusic)) &&
           Try(DecodeMusic(parts_, InFolder(source_, OnDisk::DirSamples), AudioKind::Mono,
                           Msg::SetupSamples));
}

bool LevelEditorSetup::CompileLevels()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupCompiling));
    const auto toms = TomFilesOf(source_);
    if (!toms)
        return Try(toms.Error());
    for (std::size_t i = 0; i < toms->size(); ++i) {
        parts_.progress.SetBar(i, toms->size());
        if (!Try(CompileTomOf(parts_, source_, (*toms)[i])))
            return false;
    }
    return true;
}

bool LevelEditorSetup::PutThere()
{
    if (!goesOn_) {
        const auto noted = NoteSetup(parts_.folders, source_,
                                     {target_.native(), std::string{wish_.language->word}});
        const auto placed = noted ? PutInPlace(source_, target_) : noted;
        if (!placed)
            return End(placed.Error());
    }
    parent_.clear();
    if (links_.empty())
        return true;
    return Try(
        PlaceShortcuts(ShortcutsFor(parts_.converter.tools, target_, target_, *wish_.language),
                       links_, LinkNameIn(Msg::LinkGroup, *wish_.language), target_));
}

bool LevelEditorSetup::RegisterIt()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupRegistering));
    const auto done =
        RegisterEditor(parts_.converter.tools, parts_.folders, target_, parts_.progress);
    if (!done)
        parts_.host.Tell(Tone::Warning, GetMsg(Msg::SetupRegisterFailed), WordsOf(done.Error()),
                         done.Error().details);
    return true;
}

bool LevelEditorSetup::CheckTarget()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupCheckingTarget));
    return AskAboutList(target_, true);
}

bool LevelEditorSetup::Finish()
{
    parts_.progress.SetLabel(GetMsg(Msg::SetupFinished));
    return true;
}

bool WantsSetup(Host& host, const Folders& folders, const PreferencesRecord& preferences)
{
    return folders.trle.empty() || !IsTrleFolder(host, folders, preferences, folders.trle, false) ||
           host.AskYesNo(GetMsg(Msg::SetupAgain));
}

bool SetupLevelEditor(Session& session, const SetupWish& wish, ProgressScope& progress,
                      Path& target)
{
    const Operation operation{session};
    const auto free = session.machine.FreeSpace(session.programFolder);
    if (free && *free < setupRoom) {
        session.host.Tell(Tone::Error, GetMsg(Msg::SetupNoRoomHere, {lineBreak}),
                          RoomOf(session.programFolder, *free, setupRoom));
        return false;
    }
    LevelEditorSetup setup{
        {session.host, session.machine, session.Folders(), SoundConverterOf(session), progress},
        wish};
    const bool done = setup.Run();
    ClearProgress(progress);
    if (done)
        session.host.Tell(Tone::Plain, GetMsg(Msg::SetupDone), TextOf(setup.Target()));
    else if (!wish.fromZips)
        session.host.Tell(Tone::Error, GetMsg(Msg::SetupFromFolderFailed));
    target = setup.Target();
    return done;
}

} // namespace kestrova
