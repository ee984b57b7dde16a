#include "intake/package_sources.h"

#include "catalogue/message.h"
#include "session/zip_files.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

/// Removes the unpacking folder on every way out.
class UnpackedFiles
{
public:
    explicit UnpackedFiles(const Session& session) : folder_(UnpackingFolder(session)) {}
    ~UnpackedFiles() { (void)RemoveTree(folder_); } // what stays is cleared by the next package
    UnpackedFiles(const UnpackedFiles&) = delete;
    UnpackedFiles& operator=(const UnpackedFiles&) = delete;

    [[nodiscard]] const Path& Folder() const { return folder_; }

private:
    Path folder_;
};

/// A file that takes the place of a stored one: that one's compressed form must not stay beside it.
Status DropStoredForm(const Path& target)
{
    Path stored = target;
    stored += RowText(Msg::ZlExtension);
    return FileExists(stored) ? DeleteFile(stored) : Status{};
}

/// One file into the folder, `keepSource` as it is or moved.
Status PutFile(Session& session, const Path& file, const Path& folder, Replace replace,
               bool keepSource, ProgressScope& progress)
{
    const Path target = ResolvePath(folder / Readable(file.filename().native()));
    if (replace == Replace::Ask && FileExists(target) && !SameContent(file, target) &&
        !ConfirmReplace(session, file, target))
        return {};
    Status put;
    if (keepSource) {
        CopyOptions options;
        options.progress = [&](std::uint64_t) { return progress.Step(); };
        put = CopyFileOver(file, target, options);
    } else {
        put = MoveFileOver(file, target);
    }
    return put ? DropStoredForm(target) : put;
}

bool IsMyStop(const ToolProgressState& state)
{
    return state.error == GetMsg(Msg::BreakUser);
}

Status Unpack(Session& session, const Path& package, const Path& folder, ProgressScope& progress,
              const UnpackLimits& limits)
{
    progress.SetLabel(GetMsg(Msg::UnzippingPackage, {TextOf(package.filename())}));
    if (FolderExists(folder))
        if (auto status = RemoveTree(folder); !status)
            return status;
    ToolProgressState state{&progress};
    state.quiet = true;
    progress.AllowStop();
    UnpackGuard guard{session, package, folder, limits};
    UnzipOptions options;
    options.guard = &guard;
    if (UnzipWithProgress(session, package, folder, options, state))
        return {};
    if (IsMyStop(state))
        return MakeFailure(ErrorCode::Stopped, TextOf(package));
    Failure failure{ErrorCode::CannotRead, TextOf(package), state.error};
    if (!state.details.empty())
        failure.reason += "\n" + state.details;
    return failure;
}

/// The first of each name; the others go to the report.
std::vector<Path> FirstOfEachName(const Tree& tree, SourceReport& report)
{
    std::map<std::string, Path> byName;
    std::vector<Path> files;
    for (const Path& file : tree.files) {
        const auto [known, isNew] = byName.emplace(FoldCase(file.filename().native()), file);
        if (isNew)
            files.push_back(file);
        else if (!SameContent(known->second, file))
            report.leftOut.push_back(TextOf(file.lexically_relative(tree.folders.front())));
    }
    return files;
}

Status UnzipSource(Session& session, const Path& package, const Path& folder, Replace replace,
                   ProgressScope& progress, SourceReport& report, const UnpackLimits& limits)
{
    const UnpackedFiles unpacked{session};
    if (auto status = Unpack(session, package, unpacked.Folder(), progress, limits); !status)
        return status;
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    const auto tree = ScanTree(unpacked.Folder(), [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    const std::vector<Path> files = FirstOfEachName(*tree, report);
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (auto status = PutFile(session, files[i], folder, replace, false, progress); !status)
            return status;
        progress.SetBar(i + 1, files.size());
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(package));
    }
    return {};
}

void ClearProgress(ProgressScope& progress)
{
    progress.SetLabel({});
    progress.SetBar(0, 0);
}

/// A chosen place becomes the one where the next chooser opens, as long as none was set.
void RememberPlace(Session& session, const Path& place)
{
    if (Trim(session.preferences.downloadFolder) == RowText(Msg::DefaultDownloadFolder))
        session.preferences.downloadFolder = place.native();
}

Path PlaceToStart(const Session& session)
{
    return FolderFromText(Trim(session.preferences.downloadFolder));
}

bool IsBelow(const Path& file, const Path& folder)
{
    const Path relative = file.lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

/// How many names a message of several failures holds.
constexpr std::size_t mostNamesTold = 10;

void TellFailedFiles(Session& session, const std::vector<std::string>& names, const Path& folder,
                     const Failure& first)
{
    std::vector<std::string> shown{
        names.begin(),
        names.begin() + static_cast<std::ptrdiff_t>(std::min(names.size(), mostNamesTold))};
    if (names.size() > mostNamesTold)
        shown.push_back(GetMsg(Msg::AndMoreFiles, {std::to_string(names.size() - mostNamesTold)}));
    TellFailure(session,
                GetMsg(Msg::ErrorCopyingFileIn, {Join(shown, ", ")}) + TextOf(folder) +
                    GetMsg(Msg::ClosingBracket),
                first);
}

} // namespace

Path UnpackingFolder(const Session& session)
{
    return InFolder(session.programFolder, RowText(Msg::DirTempZip));
}

bool IsPackage(const Path& file)
{
    return EndsWithName(file.filename().native(), RowText(Msg::EndingZip)) ||
           UnpackerOf(file) == ToolId::Bsdtar;
}

std::string LevelNameFrom(const Path& source)
{
    std::string name = BaseNameOf(Readable(source.filename().native()));
    if (IsPackage(source) && EndsWithName(name, RowText(Msg::EndingTar)))
        name = StripExtension(name);
    return name;
}

Status CopyOrUnzipSource(Session& session, const Path& source, const Path& folder, Replace replace,
                         ProgressScope& progress, SourceReport& report, const UnpackLimits& limits)
{
    if (IsPackage(source))
        return UnzipSource(session, source, folder, replace, progress, report, limits);
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    return PutFile(session, source, folder, Replace::Silent, true, progress);
}

bool AddFile(Session& session, const Path& source, const Path& folder, ProgressScope& progress,
             SourceReport& report)
{
    progress.SetLabel(GetMsg(IsPackage(source) ? Msg::UnzippingFiles : Msg::FileCopyLabel));
    const auto status = CopyOrUnzipSource(session, source, folder, Replace::Ask, progress, report);
    ClearProgress(progress);
    if (status)
        return true;
    ++report.failed;
    report.stopped = status.Error().code == ErrorCode::Stopped;
    if (!report.stopped)
        TellFailure(session, GetMsg(Msg::ErrorCopyingOrUnzipping) + TextOf(source), status.Error());
    return false;
}

std::optional<Path> ChooseSourceFile(Session& session, const std::string& audioType)
{
    const bool audio = !audioType.empty();
    auto chosen = session.host.ChooseOpenFile(
        audio ? GetMsg(Msg::SelectAudioFile, {audioType}) : GetMsg(Msg::SelectSourceFile),
        audio ? GetMsg(Msg::AudioFilesFilter, {audioType, audioType})
              : GetMsg(Msg::SourceFilesFilter),
        PlaceToStart(session));
    if (chosen)
        RememberPlace(session, chosen->parent_path());
    return chosen;
}

std::optional<Path> ChooseSourceFolder(Session& session)
{
    auto chosen = session.host.ChooseFolder(GetMsg(Msg::SelectSourceFolder), PlaceToStart(session));
    if (chosen)
        RememberPlace(session, *chosen);
    return chosen;
}

Result<std::vector<Path>> FilesOfSource(Session& session, const Path& source,
                                        const std::string& ending, Subfolders subfolders,
                                        ProgressScope& progress)
{
    const bool deeper =
        !ListSubfolders(source).empty() &&
        (subfolders == Subfolders::Take ||
         session.host.AskYesNo(
             GetMsg(Msg::AskSubfolders, {'"' + TextOf(source.filename()) + '"',
                                         std::string{lineBreak} + std::string{lineBreak}})));
    if (!deeper) {
        if (auto status = CanList(source); !status)
            return status.Error();
        return ListFiles(source, "*" + ending);
    }
    auto tree = ScanTree(source, [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    if (ending != RowText(Msg::EveryEnding))
        std::erase_if(tree->files, [&](const Path& file) {
            return !EndsWithName(file.filename().native(), ending);
        });
    return std::move(tree->files);
}

void AddFilesFromFolder(Session& session, const Path& given, const Path& folder,
                        ProgressScope& progress, Subfolders subfolders, SourceReport& report)
{
    progress.AllowStop();
    progress.SetLabel(GetMsg(Msg::CopyingFilesLabel));
    const Path source = ResolvePath(given);
    auto files = FilesOfSource(session, source, GetMsg(Msg::EveryEnding), subfolders, progress);
    if (!files) {
        report.stopped = files.Error().code == ErrorCode::Stopped;
        ++report.failed;
        ClearProgress(progress);
        if (!report.stopped)
            TellFailure(session, GetMsg(Msg::SourceFolderNotRead, {TextOf(source)}), files.Error());
        return;
    }
    // A folder that holds the level's own gives everything but that.
    const Path own = ResolvePath(folder);
    std::erase_if(*files, [&](const Path& file) { return IsBelow(file, own); });

    const std::vector<Path> first = FirstOfEachName({{source}, std::move(*files)}, report);
    std::vector<std::string> failed;
    Failure firstFailure;
    for (std::size_t i = 0; i < first.size() && !report.stopped; ++i) {
        const auto status =
            CopyOrUnzipSource(session, first[i], folder, Replace::Ask, progress, report);
        report.stopped = (!status && status.Error().code == ErrorCode::Stopped) || !progress.Step();
        if (!status && !report.stopped) {
            if (failed.empty())
                firstFailure = status.Error();
            failed.push_back(TextOf(first[i].lexically_relative(source)));
        }
        progress.SetBar(i + 1, first.size());
    }
    ClearProgress(progress);
    report.failed += failed.size();
    if (!failed.empty())
        TellFailedFiles(session, failed, folder, firstFailure);
}

void TellLeftOut(Session& session, const SourceReport& report)
{
    if (!report.leftOut.empty())
        session.host.Tell(Tone::Warning,
                          GetMsg(Msg::SameNameLeftOut, {Join(report.leftOut, ", ")}));
}

} // namespace kestrova
