#include "levels/export_level.h"

#include "archive/archive_parts.h"
#include "archive/level_folders.h"
#include "conversion/sound_converter.h"
#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/folder_names.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "formats/trle_folder.h"
#include "history/standing.h"
#include "levels/file_names.h"
#include "packages/level_config_file.h"
#include "packages/zip_folder.h"
#include "session/file_to_write.h"
#include "session/telling.h"
#include "storage/storage.h"
#include "storage/unstore.h"
#include "tools/tools.h"
#include "words/archive.h"
#include "words/common.h"
#include "words/levels.h"
#include "words/sources.h"
#include "words/storage.h"
#include "words/swap.h"

#include <algorithm>
#include <limits>

namespace kestrova
{

namespace
{

/// The folder that is packed, below the program's own; gone at the end, whatever happened.
class OutFolder
{
public:
    OutFolder(const Folders& folders, ProgressScope& progress)
        : progress_(progress), alive_([&progress] { return progress.Step(); }),
          packed_(ResolvePath(InFolder(folders.program, OnDisk::DirOutFiles)),
                  WorkFolder::Make::Later, alive_)
    {
    }
    ~OutFolder()
    {
        progress_.SetLabel(GetMsg(Msg::ExportClearing));
        progress_.SetBar(0, 0);
    }
    OutFolder(const OutFolder&) = delete;
    OutFolder& operator=(const OutFolder&) = delete;

    Status Make() { return packed_.IsClear() ? MakeFolder(Place()) : packed_.IsClear(); }
    [[nodiscard]] const Path& Place() const { return packed_.Folder(); }
    /// Where the level's files were expanded, when there had to be any.
    void TakeExpanded(const Path& folder)
    {
        if (!folder.empty())
            expanded_.emplace(folder, WorkFolder::Make::IsMade, alive_);
    }

    std::vector<std::string> renamed; ///< of the player's files, pairs of names

private:
    ProgressScope& progress_;
    Heartbeat alive_;
    WorkFolder packed_;
    std::optional<WorkFolder> expanded_;
};

/// The name of a file of the player's that comes in beside the level's own ones.
using NameInZip = std::function<std::string(FolderNames& names, const std::string& name)>;

/// Files come in under their own names, or under the one that `nameOf` gives; an empty one keeps a
/// file out.
Status CopyIn(const Result<std::vector<Path>>& listed, OutFolder& out, ProgressScope& progress,
              const NameInZip& nameOf = {})
{
    if (!listed)
        return listed.Error();
    const std::vector<Path>& files = *listed;
    FolderNames names{out.Place()};
    if (!names.State())
        return names.State();
    std::uint64_t total = 0;
    for (const Path& file : files)
        total += FileSize(file);
    std::uint64_t done = 0;
    for (const Path& file : files) {
        const std::string own = file.filename().native();
        const std::string name = nameOf ? nameOf(names, own) : own;
        if (name.empty())
            continue;
        if (name != own)
            out.renamed.push_back(GetMsg(Msg::RenamedPair, {TextOf(own), TextOf(name)}));
        const Path target = out.Place() / name;
        CopyOptions options;
        options.spelled = true; // of names that differ by case alone each one comes in
        options.progress = [&](std::uint64_t bytes) {
            progress.SetBar(done + bytes, total);
            return progress.Step();
        };
        if (auto status = CopyFileOver(file, target, options); !status)
            return status;
        names.Add(name);
        done += FileSize(target);
        progress.SetBar(done, total);
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(file));
    }
    return {};
}

/// A shot neither takes the place of a level's file nor becomes one where the zip is added.
std::string NameOfShot(FolderNames& names, const std::string& name)
{
    const bool isLoadPicture =
        EqualNames(name, OnDisk::LoadBmp) || EqualNames(name, OnDisk::LoadJpg);
    return isLoadPicture || names.Has(name) ? names.FreeName(name) : name;
}

Status MoveIn(const Path& source, const Path& folder, ProgressScope& progress)
{
    const auto files = ListFiles(source, OnDisk::PatAll);
    if (!files)
        return files.Error();
    for (const Path& file : *files) {
        if (auto status = MoveFileOver(file, folder / file.filename()); !status)
            return status;
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(file));
    }
    return {};
}

Result<std::vector<Path>> PicturesOf(const Path& folder)
{
    std::vector<Path> pictures;
    for (const std::string& pattern : Split(OnDisk::PicturePatterns, '|')) {
        const auto files = ListFiles(folder, pattern);
        if (!files)
            return files.Error();
        pictures.insert(pictures.end(), files->begin(), files->end());
    }
    return pictures;
}

bool TellStopped(Host& host)
{
    host.Tell(Tone::Warning, GetMsg(Msg::ExportStopped));
    return false;
}

bool Fail(Host& host, const std::string& words, const Failure& failure)
{
    if (failure.code == ErrorCode::Stopped)
        return TellStopped(host);
    TellFailure(host, words, failure);
    return false;
}

/// The level's files as the game needs them.
bool GatherFiles(const ArchiveParts& parts, const SoundConverter& sounds, LevelCode code,
                 OutFolder& out, ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::ExportCopying));
    const auto home = LevelFolderOf(parts.folders, parts.archive, code);
    const Path files = home ? InFolder(*home, OnDisk::DirFiles) : Path{};
    if (!home) {
        TellFailure(parts.host, home.Error());
        return false;
    }
    if (!FolderExists(files)) {
        parts.host.Tell(Tone::Error, GetMsg(Msg::CdNotAvailable));
        return false;
    }
    const auto unpacked =
        UnstoreLevelFiles(parts.host, parts.machine, sounds, files, true, MayStop::Yes);
    if (!unpacked) {
        TellFailure(parts.host, unpacked.Error());
        switch (unpacked.Error().code) {
        case ErrorCode::Stopped:
        case ErrorCode::Refused: // a sound that stays what it is, or a No to going on without it
        case ErrorCode::NotDone:
            return TellStopped(parts.host);
        default:
            parts.host.Tell(Tone::Error, GetMsg(Msg::ExportErrorDecompressing));
            return false;
        }
    }
    out.TakeExpanded(*unpacked);
    const auto status = unpacked->empty() ? CopyIn(ListFiles(files, OnDisk::PatAll), out, progress)
                                          : MoveIn(*unpacked, out.Place(), progress);
    return status || Fail(parts.host, GetMsg(Msg::ExportErrorCopying), status.Error());
}

/// The level's savegames: the live ones, and what only its store holds. Of one number the live one
/// counts; a level's own file of such a name makes the player's take another number.
Status GatherSavegames(const Folders& folders, const Archive& archive, LevelCode code,
                       OutFolder& out, ProgressScope& progress)
{
    const auto live = LiveStateFolder(folders, archive, code);
    if (!live)
        return live.Error();
    NameSet taken;
    const NameInZip nameOf = [&](FolderNames& names, const std::string& name) {
        if (taken.Has(name))
            return std::string{};
        taken.Add(name);
        std::string free = name;
        for (int number = 0; names.Has(free); ++number)
            free = BaseNameOf(name) + "." + std::to_string(number);
        return free;
    };
    auto status = CopyIn(ListFiles(*live, OnDisk::SavegamePattern), out, progress, nameOf);
    if (const Path store = StateStoreOf(folders, code); status && store != *live)
        status = CopyIn(ListFiles(store, OnDisk::SavegamePattern), out, progress, nameOf);
    return status;
}

/// What the player made with the level, as far as it is wanted.
bool GatherExtras(const ArchiveParts& parts, LevelCode code, const ExportChoices& choices,
                  OutFolder& out, ProgressScope& progress)
{
    if (choices.savegames.value_or(parts.settings.exportSavegames))
        if (const auto status = GatherSavegames(parts.folders, parts.archive, code, out, progress);
            !status)
            return Fail(parts.host, GetMsg(Msg::ExportErrorCopying), status.Error());
    const auto pictures =
        PicturesOf(InFolder(LevelHomeOf(parts.folders, code), OnDisk::DirScreenshots));
    if (!pictures)
        return Fail(parts.host, GetMsg(Msg::ExportErrorCopying), pictures.Error());
    if (pictures->empty() ||
        !(choices.screenshots ? *choices.screenshots
                              : parts.host.AskYesNo(GetMsg(Msg::AskExportScreenshots))))
        return true;
    progress.SetLabel(GetMsg(Msg::ExportCopyingShots));
    const auto status = CopyIn(pictures, out, progress, NameOfShot);
    return status || Fail(parts.host, GetMsg(Msg::ExportErrorCopying), status.Error());
}

/// The zip's place; nothing when the person cancelled.
std::optional<Path> ZipPlace(Host& host, const PreferencesRecord& preferences,
                             const std::string& levelName, const Path& given)
{
    if (!given.empty())
        return given;
    const auto chosen =
        host.ChooseSaveFile(GetMsg(Msg::ExportSaveTitle), GetMsg(Msg::ZipSaveFilter),
                            FolderFromText(Trim(preferences.downloadFolder)),
                            Filled(OnDisk::ExportDefaultName, {ReplaceForbiddenChars(levelName)}));
    // zip itself adds an ending to a name without one.
    if (chosen && ExtensionOf(chosen->filename().native()).empty())
        return Path{chosen->native() + std::string{OnDisk::EndingZip}};
    return chosen;
}

/// A zip of that name is there whole, the old one or the new one.
bool Pack(Host& host, const Tools& tools, const Path& target, const Path& folder,
          ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::ExportZipping) + TextOf(target.filename()));
    ToolProgressState state{&progress};
    state.tell = [&](const std::string& text) { host.Tell(Tone::Plain, text); };
    const Status packed = ReplaceZip(tools, target, folder, state);
    if (packed)
        return true;
    Failure failure = packed.Error();
    if (failure.code == ErrorCode::Stopped)
        return TellStopped(host);
    if (failure.code != ErrorCode::Missing) // a tool that lacks has words of its own
        failure.sentence = GetMsg(Msg::ExportErrorZipping) + std::string{lineBreak} +
                           (failure.sentence.empty() ? failure.subject : failure.sentence);
    return DoneOrTold(host, failure);
}

} // namespace

Result<Path> ZipIn(const Path& folder, const std::string& levelName)
{
    FolderNames names{folder};
    if (!names.State())
        return names.State().Error();
    const std::string name = Filled(OnDisk::ExportDefaultName, {ReplaceForbiddenChars(levelName)});
    return folder / (names.Has(name) ? names.FreeName(name) : name);
}

Result<LevelConfig> ConfigForFolder(const LevelRecord& level, const Path& folder)
{
    const auto files = ListFiles(folder, OnDisk::PatAll);
    if (!files)
        return files.Error();
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    LevelConfig config;
    config.name = Trim(level.levelName);
    config.note = Trim(level.levelNote);
    config.author = Trim(level.authorName);
    config.authorNote = Trim(level.authorNote);
    config.authorEmails = Trim(level.authorEmails);
    config.authorSites = Trim(level.authorSites);
    config.moreInfo = Trim(level.moreInfoFile);
    for (const Path& file : *files)
        if (!EqualNames(file.filename().native(), LevelConfigPath({}).filename().native()))
            config.files.push_back({file.filename().native(),
                                    static_cast<std::int32_t>(std::min(FileSize(file), most))});
    return config;
}

bool ExportLevel(Session& session, LevelCode code, const ExportChoices& choices)
{
    const std::ptrdiff_t index = FindLevel(session.archive, code);
    if (index < 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return false;
    }
    const LevelRecord level = session.archive.levels[static_cast<std::size_t>(index)];
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::ExportCopying));
    progress->AllowStop();
    std::optional<Path> zip;
    std::vector<std::string> renamed;
    {
        OutFolder out{session.Folders(), *progress};
        if (const auto status = out.Make(); !status)
            return Fail(session.host, GetMsg(Msg::ExportErrorCopying), status.Error());
        if (!GatherFiles(session, SoundConverterOf(session), code, out, *progress) ||
            !GatherExtras(session, code, choices, out, *progress))
            return false;
        const Path config = LevelConfigPath(out.Place());
        if (const auto status = DeleteFile(config); !status)
            return Fail(session.host, GetMsg(Msg::ExportErrorCopying), status.Error());
        const auto content = ConfigForFolder(level, out.Place());
        if (!content)
            return Fail(session.host, GetMsg(Msg::ExportErrorCopying), content.Error());
        if (!DoneOrTold(session.host, WriteLevelConfig(config, *content)))
            return false;
        zip = ZipPlace(session.host, session.preferences, std::string{Trim(level.levelName)},
                       choices.zip);
        if (!zip)
            return false;
        const auto target = FileToWrite(*zip);
        if (!DoneOrTold(session.host, StatusOf(target)) ||
            !Pack(session.host, ToolsOf(session), *target, out.Place(), *progress))
            return false;
        renamed = std::move(out.renamed);
    }
    if (!renamed.empty())
        session.host.Tell(Tone::Warning, GetMsg(Msg::ExportRenamed, {ShownNames(renamed)}));
    session.host.Tell(Tone::Plain, GetMsg(Msg::ExportDone) + TextOf(*zip));
    return true;
}

} // namespace kestrova
