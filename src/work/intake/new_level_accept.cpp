// What accepting a new or changed level does, in its binding order.
#include "archive/equal_levels.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "conversion/level_audio.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "core/look.h"
#include "formats/level_folder.h"
#include "formats/trle_folder.h"
#include "history/history.h"
#include "intake/file_names.h"
#include "intake/language_choice.h"
#include "intake/new_level.h"
#include "packages/level_config_file.h"
#include "storage/storage.h"
#include "words/intake.h"

#include <algorithm>

namespace kestrova
{

namespace
{

CopyOptions Safely(ProgressScope& progress)
{
    CopyOptions options;
    options.verify = Verify::Content;
    options.flush = true;
    options.spelled = true;
    options.progress = [&](std::uint64_t) { return progress.Step(); };
    return options;
}

enum class Held { Nothing, Same, Other };

/// What stands where `file` is to go.
Result<Held> HeldAt(const Path& target, const Path& file)
{
    const auto facts = LookAtSpelled(target);
    if (!facts)
        return facts.Error();
    if (facts->kind != platform::FileKind::File)
        return Held::Nothing;
    return SameContent(file, target) ? Held::Same : Held::Other;
}

Failure StoppedAt(const Path& file)
{
    return MakeFailure(ErrorCode::Stopped, TextOf(file));
}

} // namespace

bool NewLevel::Accept()
{
    const std::string trimmed{Trim(OnOneLine(name))};
    if (trimmed.empty()) {
        session_.host.Tell(Tone::Error, GetMsg(Msg::LevelNeedsName));
        return false;
    }
    record_.levelName = trimmed;
    if (!OnCd() && (!BeginAccepting() || !DecodeSounds()))
        return false;
    if (!HasLevelFiles() && !OnCd() && record_.levelCode != originalCode) {
        session_.host.Tell(Tone::Error, GetMsg(Msg::MissingTr4));
        return false;
    }
    if (mode_ == LevelMode::New && !ChooseLanguageFile(session_, workFolder_))
        return false;
    record_.levelNote = note;
    if (mode_ == LevelMode::New && session_.preferences.checkEqualLevels && !AskEqualLevels())
        return false;
    record_.moreInfoFile = moreInfo;
    progress_.AllowStop();
    if (!OnCd()) {
        if (!TakeSavegames() || !TakeScreenshots())
            return false;
        DropTools();
        const auto now = ListFiles(workFolder_, OnDisk::PatAll);
        if (!now)
            return TellFolderNotRead(session_, now.Error());
        if (LevelFilesChanged(*now)) {
            if (!StoreFiles())
                return false;
            CountSizes();
        }
    }
    RemoveTemp();
    ClearProgress();
    return true;
}

bool NewLevel::BeginAccepting()
{
    const auto now = ListFiles(workFolder_, OnDisk::PatAll);
    if (!now)
        return TellFolderNotRead(session_, now.Error());
    const bool savegames = std::any_of(now->begin(), now->end(), [](const Path& file) {
        return MatchesPattern(file.filename().native(), OnDisk::SavegamePattern);
    });
    return (!savegames && !LevelFilesChanged(*now)) || BeginChange();
}

bool NewLevel::DecodeSounds()
{
    // What the archive stored itself stays as it is: every further coding would cost quality.
    std::vector<Path> fresh = files_;
    std::erase_if(fresh, [&](const Path& file) { return IsAsOpened(file); });
    if (!DecodeLevelMp3(session_, workFolder_, fresh, false, false))
        return false;
    report_.stopped = false;
    return RefreshFileList() && !report_.stopped;
}

bool NewLevel::HasLevelFiles() const
{
    const std::vector<std::string> patterns = Split(OnDisk::Tr4Patterns, '|');
    return std::any_of(files_.begin(), files_.end(), [&](const Path& file) {
        return std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
            return MatchesPattern(file.filename().native(), pattern);
        });
    });
}

bool NewLevel::AskEqualLevels()
{
    progress_.SetLabel(GetMsg(Msg::VerifyingEqual));
    const auto equal =
        FindEqualTr4(session_, workFolder_, session_.archive.levels.size(), &progress_);
    ClearProgress();
    if (!equal)
        return TellFolderNotRead(session_, equal.Error());
    if (!*equal)
        return true;
    const std::string other{Trim(session_.archive.levels[(*equal)->level].levelName)};
    if (session_.host.AskYesNo(
            GetMsg(Msg::AskAddEqual,
                   {'"' + (*equal)->name + '"' + std::string{lineBreak},
                    '"' + other + '"' + std::string{lineBreak} + std::string{lineBreak}}),
            Consent::YesKeeps))
        return true;
    Cancel();
    return false;
}

bool NewLevel::TakeSavegames()
{
    const std::string_view pattern = OnDisk::SavegamePattern;
    const auto listed = ListFiles(workFolder_, pattern);
    if (!listed)
        return TellFolderNotRead(session_, listed.Error());
    const std::vector<Path>& savegames = *listed;
    const Path store = StateStoreOf(session_, record_.levelCode);
    const auto fail = [&](Message words, const Failure& failure) {
        if (failure.code != ErrorCode::Stopped)
            TellFailure(session_, GetMsg(words), failure);
        return false;
    };
    FolderNames names{store};
    if (!savegames.empty() && !names.State())
        return fail(Msg::IncomingNotCopied, names.State().Error());
    for (const Path& file : savegames) {
        if (!progress_.Step())
            return fail(Msg::IncomingNotCopied, StoppedAt(file));
        const Path target = names.PathOf(file.filename().native());
        const auto held = HeldAt(target, file);
        if (!held)
            return fail(Msg::IncomingNotCopied, held.Error());
        const bool other = *held == Held::Other;
        const bool taken = !other || ConfirmReplace(session_, file, target);
        // Whichever of two different savegames goes, it can be brought back.
        if (other)
            if (const auto kept =
                    KeepInHistory(session_, record_.levelCode, {taken ? target : file},
                                  GetMsg(taken ? Msg::ReasonReplaced : Msg::ReasonRefused));
                !kept)
                return fail(Msg::IncomingNotKept, kept.Error());
        if (taken && before_)
            if (const auto kept = before_->KeepTarget(target, file); !kept)
                return fail(Msg::IncomingNotKept, kept.Error());
        if (taken)
            if (const auto copied = CopyFileOver(file, target, Safely(progress_)); !copied)
                return fail(Msg::IncomingNotCopied, copied.Error());
        names.Add(target.filename().native());
    }
    if (savegames.empty())
        return true;
    if (const auto flushed = FlushFolder(store); !flushed)
        return fail(Msg::IncomingNotCopied, flushed.Error());
    if (const auto deleted = DeleteMatching(workFolder_, pattern); !deleted)
        return fail(Msg::IncomingNotCopied, deleted.Error());
    return true;
}

bool NewLevel::TakeScreenshots()
{
    const Path shots = InFolder(LevelHomeOf(session_, record_.levelCode), OnDisk::DirScreenshots);
    FolderNames names{shots};
    if (!names.State())
        return TellFolderNotRead(session_, names.State().Error());
    for (const std::string& pattern : Split(OnDisk::PicturePatterns, '|')) {
        const auto pictures = ListFiles(workFolder_, pattern);
        if (!pictures)
            return TellFolderNotRead(session_, pictures.Error());
        for (const Path& file : *pictures) {
            const Path target = names.PathOf(file.filename().native());
            const auto held = HeldAt(target, file);
            Status taken = held ? Status{} : held.Error();
            if (taken && !progress_.Step())
                taken = StoppedAt(file);
            if (taken && *held == Held::Other)
                taken = KeepInHistory(session_, record_.levelCode, {target},
                                      GetMsg(Msg::ReasonReplaced));
            const bool copies = taken && *held != Held::Same;
            if (taken && copies && before_)
                taken = before_->KeepTarget(target, file);
            if (taken && copies)
                taken = CopyFileOver(file, target, Safely(progress_));
            names.Add(target.filename().native());
            if (taken)
                continue;
            if (taken.Error().code != ErrorCode::Stopped)
                TellFailure(session_, GetMsg(Msg::IncomingNotCopied), taken.Error());
            return false;
        }
    }
    return true;
}

void NewLevel::DropTools()
{
    for (const std::string& tool : Split(OnDisk::IntakeTools, '|'))
        (void)DeleteFile(workFolder_ / tool); // a program too many harms no level
    // One that could be read is gone already; one that could not was told, and is no part of it.
    if (mode_ == LevelMode::New)
        (void)DeleteFile(LevelConfigPath(workFolder_));
}

bool NewLevel::StoreFiles()
{
    if (record_.levelCode == originalCode && !isTemp_)
        return true; // it stands as it is
    // What the level holds is known by its index as well.
    if (before_)
        if (const auto kept = before_->KeepTarget(
                InFolder(LevelHomeOf(session_, record_.levelCode), OnDisk::FragTr4Inf));
            !kept) {
            TellFailure(session_, GetMsg(Msg::EditNotBegun), kept.Error());
            return false;
        }
    const bool compress =
        session_.archive.header.compressLevels || session_.archive.header.wavInMp3;
    if (!compress)
        return StorePlainCopy();
    progress_.SetLabel(GetMsg(Msg::AddingLevel));
    if (StoreLevelFiles(session_, workFolder_, record_.levelCode, &progress_))
        return true;
    if (!progress_.Step()) {
        // Stopped by the person: nothing was given up, the dialog is as before.
        ClearProgress();
        return false;
    }
    // Without a temporary folder the files stand in their place already, some of them compressed.
    return !isTemp_ || StorePlainCopy();
}

bool NewLevel::StorePlainCopy()
{
    if (isTemp_)
        progress_.SetLabel(GetMsg(Msg::FileCopyLabel));
    return StoreLevelFiles(session_, workFolder_, record_.levelCode, &progress_, StoreAs::Plain);
}

void NewLevel::CountSizes()
{
    // A size that cannot be told stays what it was until the sizes are computed anew.
    record_.filesSize = SizeField(FolderSize(filesFolder_).ValueOr(record_.filesSize));
    record_.extrasSize = SizeField(
        ExtrasSizeOf(LevelHomeOf(session_, record_.levelCode)).ValueOr(record_.extrasSize));
}

} // namespace kestrova
