#include "upkeep/recover_archive.h"

#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "archive/level_sizes.h"
#include "core/copying.h"
#include "core/look.h"
#include "core/name_list.h"
#include "discs/part_of_level.h"
#include "formats/level_folder.h"
#include "history/moved_homes.h"
#include "levels/unfinished_intake.h"
#include "platform/places.h"
#include "session/held_folders.h"
#include "session/operation.h"
#include "session/telling.h"
#include "upkeep/level_search.h"
#include "upkeep/new_archive.h"
#include "upkeep/recovered_discs.h"
#include "upkeep/recovered_texts.h"
#include "words/recovering.h"
#include "words/upkeep.h"

#include <algorithm>

namespace kestrova
{

namespace
{

std::string NamesOfFolders(const std::vector<Path>& folders)
{
    std::vector<std::string> names;
    for (const Path& folder : folders)
        names.push_back(TextOf(folder.filename()));
    return ShownNames(names);
}

bool IsNumbered(const LevelRecord& level)
{
    return level.levelName == NumberedName(level.levelCode);
}

/// The list of one folder, as it comes together.
class Recovery
{
public:
    Recovery(Session& session, Path levels, LevelsFound found)
        : session_(session), levels_(std::move(levels)), found_(std::move(found)),
          texts_(session.Folders(), session.settings, levels_, session.RememberedArchive())
    {
        ArchiveHeader& header = coming_.header;
        header.compressLevels = texts_.Header().compressLevels;
        header.wavInMp3 = texts_.Header().wavInMp3;
        header.mainFolder = header.secondaryFolder = levels_.native();
        const LevelRecord* original = session.archive.Find(originalCode);
        coming_.levels.push_back(original != nullptr ? *original
                                                     : OriginalLevel(session.Folders()));
    }

    /// Folders that were set aside get numbers behind all others.
    void TakeAside()
    {
        LevelCode next = found_.codes.empty() ? 1 : found_.codes.back() + 1;
        std::vector<Path> failed;
        for (const Path& folder : found_.setAside)
            if (platform::Rename(folder, InFolder(levels_, LevelFolderName(next))))
                failed.push_back(folder);
            else
                found_.codes.push_back(next++);
        (void)FlushFolder(levels_); // a name that is lost with the power is set aside as before
        if (!failed.empty())
            session_.host.Tell(Tone::Error,
                               GetMsg(Msg::RecoverAsideFailed, {NamesOfFolders(failed)}));
    }

    bool TakeLevels()
    {
        const auto progress = session_.host.BeginProgress(
            ProgressWindow::Progress,
            GetMsg(Msg::RecoverScanning, {std::to_string(found_.codes.size())}));
        progress->AllowStop();
        for (std::size_t i = 0; i < found_.codes.size(); ++i) {
            LevelRecord level;
            level.levelCode = found_.codes[i];
            if (auto came = WholeIntakeIn(HomeIn(level.levelCode)).ValueOr({}))
                level = std::move(*came);
            else
                texts_.Fill(level, FilesOf(level.levelCode));
            coming_.levels.push_back(std::move(level));
            progress->SetBar(i + 1, found_.codes.size());
            if (!progress->Step())
                return false;
        }
        return true;
    }

    bool TakeDiscs(const std::vector<DiscFolder>& discs)
    {
        for (const DiscFolder& disc : discs)
            if (const auto taken = TakeDisc(
                    coming_, disc,
                    [&](LevelRecord& level, const Path& files) { texts_.Fill(level, files); });
                !taken) {
                TellFailure(session_.host, GetMsg(Msg::RecoverFailed), taken.Error());
                return false;
            }
        TakeNotedDiscs(coming_, levels_);
        std::stable_sort(coming_.levels.begin() + 1, coming_.levels.end(),
                         [](const LevelRecord& one, const LevelRecord& other) {
                             return one.levelCode < other.levelCode;
                         });
        return true;
    }

    /// Writes the list to a file of its own; from then on it is the loaded one.
    bool Save()
    {
        const Path file = DefaultArchivePath(session_.Folders());
        if (file.empty()) {
            session_.host.Tell(Tone::Error, GetMsg(Msg::NoArchiveNameFree));
            return false;
        }
        const Archive before = session_.archive;
        if (!DoneOrTold(session_.host,
                        HoldArchiveFolder(session_.locks, session_.Folders(), levels_)))
            return false;
        session_.archive = std::move(coming_);
        auto written = WriteArchive(session_, file);
        if (!written) {
            (void)platform::Unlink(file); // it was free, and has no whole list
            session_.archive = before;
            (void)HoldArchiveFolder(session_.locks, session_.Folders(), session_.Folders().levels);
            TellFailure(session_.host, GetMsg(Msg::RecoverFailed), written.Error());
            return false;
        }
        return true;
    }

    void Finish()
    {
        for (const Path& old : texts_.OldFolders())
            if (!FolderExists(old))
                DoneOrTold(session_.host, FollowMovedHomes(session_.Folders(), old, levels_));
        for (const LevelRecord& level : session_.archive.levels) {
            const Path home = LevelHomeOf(session_.Folders(), level.levelCode);
            if (!IsFree(IntakeMark(home)).ValueOr(true))
                (void)DropIntakeMark(home); // the list has it now
            if (level.cdNumber != 0)
                DoneOrTold(session_.host, MakeLevelSubfolders(home));
        }
        DoneOrTold(session_.host, RecomputeArchiveSize(session_, true));
        session_.list.Refresh();
        TellWhatIsOdd();
        const auto& levels = session_.archive.levels;
        const auto numbered = std::count_if(levels.begin(), levels.end(), IsNumbered);
        session_.host.Tell(Tone::Plain, GetMsg(Msg::Recovered, {std::to_string(levels.size() - 1),
                                                                std::to_string(numbered),
                                                                TextOf(session_.ArchivePath())}));
    }

private:
    [[nodiscard]] Path HomeIn(LevelCode code) const
    {
        return InFolder(levels_, LevelFolderName(code));
    }
    [[nodiscard]] Path FilesOf(LevelCode code) const
    {
        return InFolder(HomeIn(code), OnDisk::DirFiles);
    }

    void TellWhatIsOdd()
    {
        if (!found_.passedOver.empty())
            session_.host.Tell(Tone::Warning,
                               GetMsg(Msg::RecoverPassedOver, {ShownNames(found_.passedOver)}));
        std::vector<std::string> without;
        for (const LevelRecord& level : session_.archive.levels)
            if (level.levelCode != originalCode && level.cdNumber == 0 &&
                !HasLevelFile(FilesOf(level.levelCode)))
                without.push_back(ZeroPadded(level.levelCode, 4) + " " +
                                  Readable(Trim(level.levelName)));
        if (!without.empty())
            session_.host.Tell(Tone::Warning,
                               GetMsg(Msg::RecoverWithoutTr4, {ShownNames(without)}));
    }

    Session& session_;
    const Path levels_;
    LevelsFound found_;
    const RecoveredTexts texts_;
    Archive coming_;
};

std::optional<Path> FolderToRecover(Host& host, const Path& said)
{
    if (said.empty() && !host.AskOkCancel(GetMsg(Msg::AskRecover)))
        return {};
    const auto chosen = said.empty() ? host.ChooseFolder(GetMsg(Msg::ChooseRecoverFolder),
                                                         platform::CurrentFolder())
                                     : std::optional{said};
    if (!chosen)
        return {};
    Path folder =
        ResolvePath(FolderFromText(platform::AbsolutePath(*chosen).lexically_normal().native()));
    return FitsArchive(host, folder) ? std::optional{std::move(folder)} : std::nullopt;
}

/// The discs that were said, or those that the person names. No value to end here.
std::optional<std::vector<DiscFolder>> DiscsToTake(Host& host, Machine& machine, const Tools& tools,
                                                   const RecoverWish& wish)
{
    if (wish.folder.empty())
        return AskForDiscs(host);
    std::vector<DiscFolder> discs;
    for (const Path& place : wish.discs) {
        const auto found = DiscsAt(host, machine, tools, place);
        if (found.empty())
            return {};
        discs.insert(discs.end(), found.begin(), found.end());
    }
    return discs;
}

} // namespace

bool RecoverArchive(Session& session, const RecoverWish& wish)
{
    const Operation operation{session};
    const bool wasDirty = session.archive.dirty;
    const auto folder = FolderToRecover(session.host, wish.folder);
    bool saved = false;
    if (!folder || !MayReplaceArchive(session, saved))
        return false;
    const auto keep = [&] {
        session.archive.dirty = wasDirty && !saved; // it is asked about again
        return false;
    };
    const auto isThere = IsFolder(*folder);
    auto found = isThere && *isThere ? FindLevelFolders(ResolvePath(*folder))
                                     : Result<LevelsFound>{LevelsFound{}};
    if (!isThere || !found)
        return TellFolderNotRead(session.host, isThere ? found.Error() : isThere.Error()) || keep();
    const auto discs = DiscsToTake(session.host, session.machine, ToolsOf(session), wish);
    if (!discs)
        return keep();
    if (found->codes.empty() && found->setAside.empty() && discs->empty()) {
        session.host.Tell(Tone::Error, GetMsg(Msg::NoLevelFolders) + TextOf(*folder));
        return keep();
    }
    const std::vector<Path> held = session.locks.Held();
    if (!DoneOrTold(session.host, HoldFolder(session.locks, *folder)))
        return keep();
    const bool aside =
        !found->setAside.empty() &&
        (wish.takeAside ||
         (wish.folder.empty() &&
          session.host.AskYesNo(GetMsg(Msg::AskTakeAside, {NamesOfFolders(found->setAside)}))));
    Recovery recovery{session, *folder, std::move(*found)};
    if (aside)
        recovery.TakeAside();
    if (!recovery.TakeLevels() || !recovery.TakeDiscs(*discs) || !recovery.Save()) {
        session.locks.KeepOnly(held);
        return keep();
    }
    recovery.Finish();
    return true;
}

} // namespace kestrova
