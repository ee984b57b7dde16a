#include "discs/install_from_disc.h"

#include "archive/archive_place.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/copying.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "discs/disc_notes.h"
#include "discs/setup_cd.h"
#include "formats/exact_names.h"
#include "formats/level_folder.h"
#include "session/telling.h"
#include "words/disc_install.h"

namespace kestrova
{

namespace
{

/// The list as its disc has it, with the exact names that lie beside it there.
Result<Archive> ReadFromDisc(const Path& file)
{
    const Path place = ResolvePath(file);
    auto content = ReadArchiveFile(place);
    if (!content)
        return content.Error();
    Archive archive{std::move(content->header), std::move(content->levels), place};
    if (const auto bytes = ReadFileIfThere(InFolder(place.parent_path(), OnDisk::FragExactNames),
                                           longestExactNames);
        bytes && *bytes)
        ApplyExactNames(ParseExactNames(**bytes), archive.levels);
    return archive;
}

/// The last part of the archive's folder, below the chosen one.
Result<Path> TargetOf(const Archive& archive, const DiscSetup& setup)
{
    std::string_view folder = Trim(archive.header.secondaryFolder);
    while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/'))
        folder.remove_suffix(1);
    const std::string name = FileNameOf(folder);
    const auto safe = SafeName(name);
    if (!safe || name.starts_with(stagedPrefix))
        return InWords(ErrorCode::Refused, GetMsg(Msg::InstallNameBad, {Readable(folder)}));
    const Path target = ResolvePath(setup.folder) / *safe;
    const Path longest = target / archive.file.filename();
    if (ToWindows1252(longest.native()).size() > folderFieldSize)
        return InWords(ErrorCode::Refused, GetMsg(Msg::InstallNameBad, {TextOf(longest)}));
    return target;
}

/// Nothing stands there, or an empty folder, which goes.
Status IsFreeTarget(const Path& target)
{
    const auto found = FindPath(target);
    const auto isFree = found ? IsFree(*found) : Result<bool>{found.Error()};
    if (!isFree)
        return isFree.Error();
    if (*isFree || !platform::RemoveFolder(*found))
        return {};
    return InWords(ErrorCode::Refused, GetMsg(Msg::InstallFolderTaken, {TextOf(*found)}));
}

/// One install, built in a folder beside its target.
class Installing
{
public:
    Installing(const DiscInstall& install, Archive archive, DiscSetup setup, Path target)
        : at_(install), archive_(std::move(archive)), setup_(std::move(setup)),
          target_(std::move(target)), work_(StagedNameFor(target_)),
          disc_(archive_.file.parent_path()), name_(archive_.file.filename())
    {
        at_.folders.levels = work_.Folder();
        // What is found out about the discs is noted in the new folder, never where a file says.
        archive_.header.secondaryFolder = work_.Folder().native();
    }

    Status Go(ProgressScope& progress)
    {
        NotePlace(target_.parent_path());
        if (auto made = MakeFolders(work_.Folder()); !made)
            return made;
        TakeNote();
        for (std::size_t i = 0; i < archive_.levels.size(); ++i) {
            progress.SetBar(i + 1, archive_.levels.size());
            if (!progress.Step())
                return MakeFailure(ErrorCode::Stopped, {});
            if (archive_.levels[i].levelCode == originalCode)
                continue;
            if (auto status = Level(archive_.levels[i], progress); !status)
                return status;
        }
        // Every copy belongs to its owner, who may change it; of a disc nobody may.
        progress.SetLabel(GetMsg(Msg::RemovingReadOnly));
        return Finish();
    }

private:
    /// What is known of the discs, if they tell it themselves; where images lay does not count
    /// here.
    void TakeNote()
    {
        auto note = ReadDiscNote(disc_);
        if (!note)
            at_.host.Tell(Tone::Warning,
                          GetMsg(Msg::InstallNoteDamaged, {TextOf(DiscNoteOf(disc_))}));
        if (!note || note->discs.empty())
            return;
        for (NotedDisc& disc : note->discs)
            disc.image.clear();
        note_ = std::move(*note);
    }
    /// It comes to where images were found meanwhile. Not before: a level is compared as it is
    /// copied, and what stays on its disc is not read for that.
    Status KeepNote()
    {
        auto found = ReadDiscNote(work_.Folder());
        if (!found)
            return found.Error();
        for (NotedDisc& disc : note_.discs) {
            if (const NotedDisc* seen = found->Find(disc.number))
                disc.image = seen->image;
            found->Put(std::move(disc));
        }
        if (found->folder.empty())
            found->folder = note_.folder;
        return found->discs.empty() ? Status{} : WriteDiscNote(work_.Folder(), *found);
    }

    Status Level(LevelRecord& level, ProgressScope& progress)
    {
        const Path home = LevelHomeOf(at_.folders, level.levelCode);
        if (auto made = MakeFolders(home); !made)
            return made;
        for (const std::string_view part :
             {OnDisk::DirScreenshots, OnDisk::DirSavegames, OnDisk::DirBackupSavegames})
            if (auto made = MakeFolder(InFolder(home, part)); !made)
                return made;
        if (level.cdNumber == 0)
            return {};
        const auto disc = LevelFolderOf(at_.folders, archive_, level.levelCode);
        if (!disc)
            return InWords(disc.Error().code, GetMsg(Msg::CdMissing),
                           disc.Error().sentence + "\n" + disc.Error().reason);
        if (auto copied = CopyIndex(*disc, home); !copied)
            return copied;
        return setup_.full ? Files(level, *disc, home, progress) : Status{};
    }

    static Status CopyIndex(const Path& disc, const Path& home)
    {
        const Path index = ResolvePath(InFolder(disc, OnDisk::FragTr4Inf));
        const auto isThere = IsFile(index);
        if (!isThere || !*isThere || platform::FactsOfLink(index).kind == platform::FileKind::Link)
            return isThere ? Status{} : Status{isThere.Error()};
        CopyOptions plain;
        plain.rights = plainRights;
        return CopyFileOver(index, InFolder(home, OnDisk::FragTr4Inf), plain);
    }

    /// All files of a level, or none. The person may go on without them: they stay on their disc.
    Status Files(LevelRecord& level, const Path& disc, const Path& home, ProgressScope& progress)
    {
        const Path source = ResolvePath(InFolder(disc, OnDisk::DirFiles));
        const Path target = InFolder(home, OnDisk::DirFiles);
        auto copied = CopyFiles(source, target, progress);
        const NotedLevel* noted = FindNoted(note_, level.cdNumber, level.levelCode);
        if (copied && noted != nullptr)
            copied = HoldsNotedFiles(target, *noted, [&] { return progress.Step(); });
        else if (copied)
            ++notCompared_;
        if (copied) {
            level.cdNumber = 0;
            return {};
        }
        if (copied.Error().code == ErrorCode::Stopped)
            return copied;
        if (auto removed = RemoveTree(target); !removed && FolderExists(target))
            return removed;
        if (at_.host.AskYesNo(GetMsg(Msg::AskGoOnInstalling, {TextOf(source) + "'"})))
            return {};
        return copied;
    }

    static Status CopyFiles(const Path& source, const Path& target, ProgressScope& progress)
    {
        const auto tree = ScanTree(source, [&] { return progress.Step(); });
        if (!tree)
            return tree.Error();
        CopyOptions plain;
        plain.rights = plainRights;
        plain.verify = Verify::Content;
        plain.progress = [&](std::uint64_t) { return progress.Step(); };
        for (const Path& folder : tree->folders)
            if (auto made = MakeFolders(target / folder.lexically_relative(source)); !made)
                return made;
        for (const Path& file : tree->files) {
            if (!progress.Step())
                return MakeFailure(ErrorCode::Stopped, {});
            if (auto copied = CopyFileOver(file, target / file.lexically_relative(source), plain);
                !copied)
                return copied;
        }
        return {};
    }

    void TellNotCompared() const
    {
        if (notCompared_ > 0)
            at_.host.Tell(Tone::Warning,
                          GetMsg(Msg::InstallNotCompared, {std::to_string(notCompared_)}));
    }

    /// The list names its new folder, and the folder gets its name.
    Status Finish()
    {
        ExactNames names;
        if (MergeExactNames(names, archive_.levels))
            if (auto status = WriteWholeFile(InFolder(work_.Folder(), OnDisk::FragExactNames),
                                             FormatExactNames(names));
                !status)
                return status;
        ArchiveHeader& header = archive_.header;
        header.secondaryFolder = target_.native();
        header.cdMovePending = false;
        FollowDiscs(archive_);
        // Where no level stays on a disc none is asked for any more.
        if (auto status =
                IsArchiveOnCd(archive_) ? KeepNote() : DeleteSpelled(DiscNoteOf(work_.Folder()));
            !status)
            return status;
        const Path file = target_ / name_;
        for (const auto& [folder, text] :
             {std::pair{ArchiveFolder::Main, header.mainFolder},
              std::pair{ArchiveFolder::Secondary, header.secondaryFolder}})
            KeepExactFolder(at_.settings, ExactFolderField(folder, file), text);
        if (auto status = WriteSettings(at_.folders.program, at_.settings); !status)
            return status;
        if (auto status =
                WriteWholeFile(work_.Folder() / name_, FormatArchive(header, archive_.levels));
            !status)
            return status;
        if (const auto failure = platform::SyncFileSystem(work_.Folder()))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(work_.Folder()), failure);
        if (const auto failure = platform::Rename(work_.Folder(), target_))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target_), failure);
        (void)FlushFolder(target_.parent_path()); // after a power cut it is installed again
        TellNotCompared();
        return {};
    }

    DiscInstall at_;
    Archive archive_;
    DiscSetup setup_;
    Path target_;
    WorkFolder work_;
    Path disc_;
    Path name_;
    DiscNote note_;
    int notCompared_ = 0; ///< levels whose files came, and of which the note tells nothing
};

/// All that can be known beforehand.
Result<Path> PlaceFor(const DiscInstall& install, const Archive& archive, const DiscSetup& setup)
{
    if (archive.Find(originalCode) == nullptr)
        return MakeFailure(ErrorCode::Damaged, TextOf(archive.file));
    auto target = TargetOf(archive, setup);
    if (!target)
        return target;
    if (auto safe = MayHoldLevels(install.folders, *target); !safe)
        return safe.Error();
    if (auto made = MakeFolders(setup.folder); !made)
        return made.Error();
    if (auto isFree = IsFreeTarget(*target); !isFree)
        return isFree.Error();
    if (auto room = HasSetupRoom(install.machine, archive.header, setup); !room)
        return room.Error();
    return target;
}

bool TellNotInstalled(Host& host, const Path& folder, const Failure& failure)
{
    if (failure.code != ErrorCode::Stopped || !failure.sentence.empty())
        TellFailure(host, Saying(GetMsg(Msg::InstallNotDone, {TextOf(folder)}), failure));
    return false;
}

} // namespace

std::optional<Path> InstallArchive(const DiscInstall& install, const Path& file,
                                   const DiscSetup& setup)
{
    auto archive = ReadFromDisc(file);
    const auto target =
        archive ? PlaceFor(install, *archive, setup) : Result<Path>{archive.Error()};
    if (!target) {
        TellNotInstalled(install.host, setup.folder, target.Error());
        return {};
    }
    const Path made = *target / archive->file.filename();
    {
        const auto progress =
            install.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::InstallUnderWay));
        progress->AllowStop();
        Installing installing{install, std::move(*archive), setup, *target};
        if (const auto done = installing.Go(*progress); !done) {
            TellNotInstalled(install.host, *target, done.Error());
            return {};
        }
    }
    install.host.Tell(Tone::Plain,
                      GetMsg(Msg::ArchiveInstalled, {TextOf(made) + std::string{lineBreak}}));
    return made;
}

bool InstallFromCd(const DiscInstall& install, Path& file, bool& abort)
{
    DiscReader* discs = install.folders.discs;
    abort = discs != nullptr && discs->DiscOf(file).has_value();
    if (!abort)
        return false;
    const auto archive = ReadFromDisc(file);
    const auto setup = archive ? discs->AskForSetup(*archive) : Result<DiscSetup>{archive.Error()};
    if (!setup)
        return TellNotInstalled(install.host, file, setup.Error());
    const auto installed = InstallArchive(install, file, *setup);
    if (!installed)
        return false;
    file = *installed;
    abort = false;
    return true;
}

} // namespace kestrova
