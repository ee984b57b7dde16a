#include "upkeep/export_level.h"

#include "archive/level_folders.h"
#include "archive/storage.h"
#include "catalogue/message.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/staged_file.h"
#include "session/file_to_write.h"
#include "session/level_config_file.h"
#include "session/zip_files.h"
#include "session/zip_names.h"

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
    OutFolder(const Session& session, ProgressScope& progress)
        : path_(ResolvePath(InFolder(session.programFolder, RowText(Msg::DirOutFiles)))),
          progress_(progress)
    {
    }
    ~OutFolder()
    {
        progress_.SetLabel(GetMsg(Msg::ExportClearing));
        progress_.SetBar(0, 0);
        for (const Path& folder : {path_, unpacked})
            if (!folder.empty())
                (void)ClearPlace(folder, [&] { return progress_.Step(), true; });
    }
    OutFolder(const OutFolder&) = delete;
    OutFolder& operator=(const OutFolder&) = delete;

    Status Make()
    {
        if (auto status = ClearPlace(path_); !status)
            return status;
        return MakeFolder(path_);
    }
    [[nodiscard]] const Path& Place() const { return path_; }

    Path unpacked; ///< the expanded files, when there had to be any

private:
    Path path_;
    ProgressScope& progress_;
};

/// Files come in under their own names; one that is there already stays.
Status CopyIn(const Result<std::vector<Path>>& listed, const Path& folder, ProgressScope& progress)
{
    if (!listed)
        return listed.Error();
    const std::vector<Path>& files = *listed;
    std::uint64_t total = 0;
    for (const Path& file : files)
        total += FileSize(file);
    std::uint64_t done = 0;
    for (const Path& file : files) {
        const Path target = folder / file.filename();
        const auto isFree = IsFree(target);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            continue;
        CopyOptions options;
        options.progress = [&](std::uint64_t bytes) {
            progress.SetBar(done + bytes, total);
            return progress.Step();
        };
        if (auto status = CopyFileOver(file, target, options); !status)
            return status;
        done += FileSize(target);
        progress.SetBar(done, total);
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(file));
    }
    return {};
}

Status MoveIn(const Path& source, const Path& folder, ProgressScope& progress)
{
    const auto files = ListFiles(source, RowText(Msg::PatAll));
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
    for (const std::string& pattern : Split(RowText(Msg::PicturePatterns), '|')) {
        const auto files = ListFiles(folder, pattern);
        if (!files)
            return files.Error();
        pictures.insert(pictures.end(), files->begin(), files->end());
    }
    return pictures;
}

bool TellStopped(Session& session)
{
    session.host.Tell(Tone::Warning, GetMsg(Msg::ExportStopped));
    return false;
}

bool Fail(Session& session, const std::string& words, const Failure& failure)
{
    if (failure.code == ErrorCode::Stopped)
        return TellStopped(session);
    TellFailure(session, words, failure);
    return false;
}

/// The level's files as the game needs them.
bool GatherFiles(Session& session, LevelCode code, OutFolder& out, ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::ExportCopying));
    const Path home = LevelFolderOf(session, code, true);
    const Path files = InFolder(home, RowText(Msg::DirFiles));
    if (session.cdNotAvailable || !FolderExists(files)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::ExportCdNotAvailable));
        return false;
    }
    bool stopped = false;
    if (!UnstoreLevelFiles(session, files, out.unpacked, true, &stopped)) {
        if (stopped)
            return TellStopped(session);
        session.host.Tell(Tone::Error, GetMsg(Msg::ExportErrorDecompressing));
        return false;
    }
    const auto status = out.unpacked.empty()
                            ? CopyIn(ListFiles(files, RowText(Msg::PatAll)), out.Place(), progress)
                            : MoveIn(out.unpacked, out.Place(), progress);
    return status || Fail(session, GetMsg(Msg::ExportErrorCopying), status.Error());
}

/// What the player made with the level, as far as it is wanted.
bool GatherExtras(Session& session, LevelCode code, const ExportChoices& choices, OutFolder& out,
                  ProgressScope& progress)
{
    if (choices.savegames.value_or(session.settings.exportSavegames))
        if (const auto status =
                CopyIn(ListFiles(StateStoreOf(session, code), RowText(Msg::SavegamePattern)),
                       out.Place(), progress);
            !status)
            return Fail(session, GetMsg(Msg::ExportErrorCopying), status.Error());
    const auto pictures =
        PicturesOf(InFolder(LevelHomeOf(session, code), RowText(Msg::DirScreenshots)));
    if (!pictures)
        return Fail(session, GetMsg(Msg::ExportErrorCopying), pictures.Error());
    if (pictures->empty() ||
        !(choices.screenshots ? *choices.screenshots
                              : session.host.AskYesNo(GetMsg(Msg::AskExportScreenshots))))
        return true;
    progress.SetLabel(GetMsg(Msg::ExportCopyingShots));
    const auto status = CopyIn(pictures, out.Place(), progress);
    return status || Fail(session, GetMsg(Msg::ExportErrorCopying), status.Error());
}

/// The zip's place; nothing when the person cancelled.
std::optional<Path> ZipPlace(Session& session, const std::string& levelName, const Path& given)
{
    if (!given.empty())
        return given;
    const auto chosen = session.host.ChooseSaveFile(
        GetMsg(Msg::ExportSaveTitle), GetMsg(Msg::ExportSaveFilter),
        FolderFromText(Trim(session.preferences.downloadFolder)),
        GetMsg(Msg::ExportDefaultName, {ReplaceForbiddenChars(levelName)}));
    // zip itself adds an ending to a name without one.
    if (chosen && ExtensionOf(chosen->filename().native()).empty())
        return Path{chosen->native() + GetMsg(Msg::ExtensionZip)};
    return chosen;
}

/// A zip of that name is there whole, the old one or the new one.
bool Pack(Session& session, const Path& target, const Path& folder, ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::ExportZipping) + TextOf(target.filename()));
    const Path staged = StagedNameFor(target).native() + GetMsg(Msg::ExtensionZip);
    ToolProgressState state{&progress};
    const bool told = FindTool(session, RowOf(ToolId::Zip)).empty(); // in words of its own
    bool packed = ZipFolder(session, staged, folder, state);
    if (packed) {
        if (const auto marked = MarkUtf8Names(staged); !marked) {
            packed = false;
            state.error = marked.Error().subject;
            state.details = marked.Error().reason;
        }
    }
    if (packed) {
        if (const auto failure = platform::Rename(staged, target)) {
            packed = false;
            state.error = TextOf(target);
            state.details = failure.message();
        }
    }
    if (!packed) {
        (void)DeleteFile(staged); // unlisted, and of no use to anybody
        if (state.error == GetMsg(Msg::BreakUser))
            return TellStopped(session);
        if (!told)
            session.host.Tell(
                Tone::Error, GetMsg(Msg::ExportErrorZipping) + std::string{lineBreak} + state.error,
                state.details);
    }
    return packed;
}

} // namespace

Result<LevelConfig> ConfigForFolder(const LevelRecord& level, const Path& folder)
{
    const auto files = ListFiles(folder, RowText(Msg::PatAll));
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
    const std::ptrdiff_t index = FindLevel(session, code);
    if (index < 0) {
        session.host.Tell(Tone::Error, GetMsg(Msg::UnknownLevelCode, {std::to_string(code)}));
        return false;
    }
    const LevelRecord level = session.archive.levels[static_cast<std::size_t>(index)];
    const auto progress =
        session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::ExportCopying));
    progress->AllowStop();
    std::optional<Path> zip;
    {
        OutFolder out{session, *progress};
        if (const auto status = out.Make(); !status)
            return Fail(session, GetMsg(Msg::ExportErrorCopying), status.Error());
        if (!GatherFiles(session, code, out, *progress) ||
            !GatherExtras(session, code, choices, out, *progress))
            return false;
        const Path config = LevelConfigPath(out.Place());
        if (const auto status = DeleteFile(config); !status)
            return Fail(session, GetMsg(Msg::ExportErrorCopying), status.Error());
        const auto content = ConfigForFolder(level, out.Place());
        if (!content)
            return Fail(session, GetMsg(Msg::ExportErrorCopying), content.Error());
        if (!WriteLevelConfig(session, config, *content))
            return false;
        zip = ZipPlace(session, std::string{Trim(level.levelName)}, choices.zip);
        const auto target = zip ? FileToWrite(session, *zip) : std::nullopt;
        if (!target || !Pack(session, *target, out.Place(), *progress))
            return false;
    }
    session.host.Tell(Tone::Plain, GetMsg(Msg::ExportDone) + TextOf(*zip));
    return true;
}

} // namespace kestrova
