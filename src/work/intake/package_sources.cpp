#include "intake/package_sources.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "formats/program_folder.h"
#include "intake/file_names.h"
#include "intake/file_placing.h"
#include "intake/stored_sources.h"
#include "packages/zip_files.h"
#include "words/common.h"
#include "words/intake.h"
#include "words/levels.h"
#include "words/storage.h"

#include <algorithm>
#include <map>

namespace kestrova
{

/// Removes the unpacking folder on every way out.
class UnpackingPlace
{
public:
    explicit UnpackingPlace(const Session& session) : folder_(UnpackingFolder(session)) {}
    ~UnpackingPlace() { (void)ClearPlace(folder_); } // what stays is cleared by the next package
    UnpackingPlace(const UnpackingPlace&) = delete;
    UnpackingPlace& operator=(const UnpackingPlace&) = delete;

    [[nodiscard]] const Path& Folder() const { return folder_; }

private:
    Path folder_;
};

namespace
{

const Path& UnpackingPlaceOf(const Session& session, SourceReport& report)
{
    if (report.unpacking == nullptr)
        report.unpacking = std::make_shared<UnpackingPlace>(session);
    return report.unpacking->Folder();
}

bool IsMyStop(const ToolProgressState& state)
{
    return state.error == GetMsg(Msg::BreakUser);
}

Status Unpack(Session& session, const Path& package, const Path& folder, ProgressScope& progress,
              const SourceOptions& source, SourceReport& report)
{
    progress.SetLabel(GetMsg(Msg::UnzippingPackage, {TextOf(package.filename())}));
    if (!IsReadyToUnpack(folder))
        if (auto status = ClearPlace(folder); !status)
            return status;
    ToolProgressState state{&progress};
    state.quiet = true;
    progress.AllowStop();
    UnpackGuard guard{session, package, folder, source.limits};
    UnpackReport unpacked;
    UnzipOptions options;
    options.guard = &guard;
    options.namesAs = source.namesAs;
    options.report = &unpacked;
    options.keepStaging = true;
    options.keepWhole = source.keepWhole;
    const bool done = UnzipWithProgress(session, package, folder, options, state);
    report.came.entries += guard.Came().entries;
    report.came.bytes += guard.Came().bytes;
    if (!done) {
        if (IsMyStop(state))
            return MakeFailure(ErrorCode::Stopped, TextOf(package));
        return Failure{ErrorCode::Damaged, state.error, state.details};
    }
    if (!unpacked.namesAs.empty())
        report.namesAs = unpacked.namesAs;
    const auto append = [](std::vector<std::string>& to, const std::vector<std::string>& from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    if (!unpacked.lost.empty()) {
        ++report.failed;
        session.host.Tell(Tone::Error, GetMsg(Msg::PackagePartsLost, {TextOf(package.filename()),
                                                                      ShownNames(unpacked.lost)}));
    }
    append(report.notFiles, unpacked.notFiles);
    for (const RenamedFile& file : unpacked.renamed)
        report.renamed.push_back(GetMsg(Msg::RenamedPair, {file.name, file.now}));
    append(report.ledOut, unpacked.ledOut);
    append(report.twice, unpacked.twice);
    return {};
}

/// The first of each name; the others go to the report.
std::vector<Path> FirstOfEachName(const Tree& tree, ProgressScope& progress, SourceReport& report)
{
    // What a Stop leaves uncompared is named; the next step hears the Stop.
    const auto heartbeat = [&] { return progress.Step(); };
    std::map<std::string, Path> byName;
    std::vector<Path> files;
    for (const Path& file : tree.files) {
        const auto [known, isNew] =
            byName.emplace(FoldCase(ListableName(file.filename().native())), file);
        if (isNew)
            files.push_back(file);
        else if (!SameContent(known->second, file, heartbeat))
            report.leftOut.push_back(TextOf(file.lexically_relative(tree.folders.front())));
    }
    return files;
}

/// A single file in stored form.
Status ExpandSource(Session& session, const Path& source, const Path& folder,
                    const SourceOptions& options, ProgressScope& progress, SourceReport& report)
{
    const UnpackingPlace expanded{session};
    if (auto status = MakeFolders(expanded.Folder()); !status)
        return status;
    // All of them together become no more than one could.
    report.storedBytes += FileSize(source);
    const std::uint64_t most = MostBytesOf(report.storedBytes, options.limits);
    ExpandLimit limit{source, most - std::min(most, report.expandedBytes)};
    Path file = source;
    while (IsStoredForm(file)) {
        const std::string name = StripExtension(ListableName(file.filename().native()));
        const Path next = expanded.Folder() / name;
        if (auto status = ExpandStored(session, file, next, limit, progress); !status)
            return status;
        report.expandedBytes += FileSize(next);
        file = next;
    }
    return PutFile(session, file, folder, {options.replaceByFile, false, {}}, progress, report);
}

Status UnzipSource(Session& session, const Path& package, const Path& folder,
                   const SourceOptions& options, ProgressScope& progress, SourceReport& report)
{
    const Path& unpacked = UnpackingPlaceOf(session, report);
    if (auto status = Unpack(session, package, unpacked, progress, options, report); !status)
        return status;
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    auto tree = ScanTree(unpacked, [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    const auto size = FolderSize(unpacked);
    if (!size)
        return size.Error();
    const auto came = static_cast<std::uint64_t>(*size);
    const std::uint64_t most = MostBytesOf(FileSize(package), options.limits);
    if (auto status = ExpandStoredFiles(session, tree->files,
                                        {package, most - std::min(most, came)}, progress, report);
        !status)
        return status;
    std::vector<Path> files = FirstOfEachName(*tree, progress, report);
    // The file that takes the package's own place comes last: until then the package is whole.
    const FolderNames& names = NamesOf(folder, report);
    if (!names.State())
        return names.State();
    std::stable_partition(files.begin(), files.end(), [&](const Path& file) {
        return names.PathOf(ListableName(file.filename().native())) != package;
    });
    const Placing placing{options.replace, false, package};
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (auto status = PutFile(session, files[i], folder, placing, progress, report); !status)
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
    if (Trim(session.preferences.downloadFolder) == OnDisk::DefaultDownloadFolder)
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

void TellFailedFiles(Session& session, const std::vector<std::string>& names, const Path& folder,
                     const Failure& first)
{
    TellSourceFailure(session,
                      GetMsg(Msg::ErrorCopyingFileIn, {ShownNames(names)}) + TextOf(folder) +
                          GetMsg(Msg::ClosingBracket),
                      first);
}

/// The tree without the folders in it that cannot be read, which are failures of their own.
Result<Tree> ReadableTree(const Path& source, ProgressScope& progress,
                          std::vector<Failure>& notRead)
{
    const Heartbeat heartbeat = [&] { return progress.Step(); };
    auto whole = ScanTree(source, heartbeat);
    if (whole || whole.Error().code == ErrorCode::Stopped)
        return whole;
    const auto files = ListFiles(source, OnDisk::PatAll);
    const auto folders = ListSubfolders(source);
    if (!files || !folders)
        return files ? folders.Error() : files.Error();
    Tree tree{{source}, *files};
    for (const Path& folder : *folders) {
        auto below = ReadableTree(folder, progress, notRead);
        if (!below && below.Error().code == ErrorCode::Stopped)
            return below;
        if (!below) {
            notRead.push_back({below.Error().code, TextOf(folder), below.Error().reason});
            continue;
        }
        tree.folders.insert(tree.folders.end(), below->folders.begin(), below->folders.end());
        tree.files.insert(tree.files.end(), below->files.begin(), below->files.end());
    }
    return tree;
}

/// The folders that count, and the files in them. With `notRead` a sub-folder that cannot be read
/// goes there, and the rest counts.
Result<Tree> TreeOfSource(Session& session, const Path& source, const std::string& ending,
                          Subfolders subfolders, ProgressScope& progress,
                          std::vector<Failure>* notRead)
{
    const auto folders = ListSubfolders(source);
    if (!folders)
        return folders.Error();
    const bool deeper =
        !folders->empty() &&
        (subfolders == Subfolders::Take ||
         session.host.AskYesNo(
             GetMsg(Msg::AskSubfolders, {'"' + TextOf(source.filename()) + '"',
                                         std::string{lineBreak} + std::string{lineBreak}})));
    if (!deeper) {
        const auto files = ListFiles(source, "*" + ending);
        if (!files)
            return files.Error();
        return Tree{{source}, *files};
    }
    auto tree = notRead != nullptr ? ReadableTree(source, progress, *notRead)
                                   : ScanTree(source, [&] { return progress.Step(); });
    if (tree && ending != OnDisk::EveryEnding)
        std::erase_if(tree->files, [&](const Path& file) {
            return !EndsWithName(file.filename().native(), ending);
        });
    return tree;
}

/// Links that lead out of the tree, and whatever else is no file.
std::vector<std::string> NotFilesIn(const Tree& tree)
{
    const std::set<Path> files{tree.files.begin(), tree.files.end()};
    std::vector<std::string> names;
    for (const Path& folder : tree.folders) {
        std::vector<platform::FolderEntry> entries;
        (void)platform::ListFolder(folder, entries); // it could be listed a moment ago
        for (const platform::FolderEntry& entry : entries) {
            const Path path = folder / entry.name;
            if (entry.kind != platform::FileKind::File &&
                entry.kind != platform::FileKind::Folder && !files.contains(path))
                names.push_back(TextOf(path.lexically_relative(tree.folders.front())));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

Path UnpackingFolder(const Session& session)
{
    return InFolder(session.programFolder, OnDisk::DirTempZip);
}

bool IsPackage(const Path& file)
{
    return EndsWithName(file.filename().native(), OnDisk::EndingZip) ||
           EndsWithName(file.filename().native(), OnDisk::EndingZipx) ||
           UnpackerOf(file) == ToolId::Bsdtar;
}

std::string LevelNameFrom(const Path& source)
{
    std::string name = BaseNameOf(Readable(source.filename().native()));
    if (IsPackage(source) && EndsWithName(name, OnDisk::EndingTar))
        name = StripExtension(name);
    return name;
}

Status CopyOrUnzipSource(Session& session, const Path& source, const Path& folder,
                         const SourceOptions& options, ProgressScope& progress,
                         SourceReport& report)
{
    if (const auto before = LookAt(source)) // otherwise the copy says so
        report.read.emplace_back(source, *before);
    if (IsPackage(source))
        return UnzipSource(session, source, folder, options, progress, report);
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    if (IsStoredForm(source))
        return ExpandSource(session, source, folder, options, progress, report);
    return PutFile(session, source, folder, {options.replaceByFile, true, {}}, progress, report);
}

void TellSourceFailure(Session& session, const std::string& text, const Failure& failure)
{
    if (failure.code == ErrorCode::Damaged)
        session.host.Tell(Tone::Error, text + std::string{lineBreak} + failure.subject,
                          failure.reason);
    else
        TellFailure(session, text, failure);
}

bool AddFile(Session& session, const Path& source, const Path& folder, const SourceOptions& options,
             ProgressScope& progress, SourceReport& report)
{
    const bool package = IsPackage(source);
    progress.SetLabel(GetMsg(package ? Msg::UnzippingFiles : Msg::FileCopyLabel));
    if (package)
        report.packages.push_back(source);
    const auto status = CopyOrUnzipSource(session, source, folder, options, progress, report);
    ClearProgress(progress);
    if (status)
        return true;
    ++report.failed;
    report.stopped = status.Error().code == ErrorCode::Stopped;
    if (!report.stopped)
        TellSourceFailure(session, GetMsg(Msg::ErrorCopyingOrUnzipping) + TextOf(source),
                          status.Error());
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
    auto tree = TreeOfSource(session, source, ending, subfolders, progress, nullptr);
    if (!tree)
        return tree.Error();
    return std::move(tree->files);
}

void AddFilesFromFolder(Session& session, const Path& given, const Path& folder,
                        const SourceOptions& options, ProgressScope& progress,
                        Subfolders subfolders, SourceReport& report)
{
    progress.AllowStop();
    progress.SetLabel(GetMsg(Msg::CopyingFilesLabel));
    const Path source = ResolvePath(given);
    std::vector<Failure> notRead;
    auto tree = TreeOfSource(session, source, std::string{OnDisk::EveryEnding}, subfolders,
                             progress, &notRead);
    if (!tree) {
        report.stopped = tree.Error().code == ErrorCode::Stopped;
        ++report.failed;
        ClearProgress(progress);
        if (!report.stopped)
            TellFailure(session, GetMsg(Msg::SourceFolderNotRead, {TextOf(source)}), tree.Error());
        return;
    }
    report.failed += notRead.size();
    for (const Failure& failure : notRead)
        session.host.Tell(Tone::Error, GetMsg(Msg::SourceFolderNotRead, {failure.subject}),
                          failure.reason);
    // A folder that holds the level's own gives everything but that.
    const Path own = ResolvePath(folder);
    const auto isOwn = [&](const Path& path) { return path == own || IsBelow(path, own); };
    std::erase_if(tree->files, isOwn);
    std::erase_if(tree->folders, isOwn);
    for (std::string& name : NotFilesIn(*tree))
        report.notFiles.push_back(std::move(name));

    const std::vector<Path> first = FirstOfEachName(*tree, progress, report);
    std::vector<std::string> failed;
    Failure firstFailure;
    for (std::size_t i = 0; i < first.size() && !report.stopped; ++i) {
        if (IsPackage(first[i]))
            report.packages.push_back(first[i]);
        const auto status = CopyOrUnzipSource(session, first[i], folder, options, progress, report);
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

void NoteChangedSources(SourceReport& report)
{
    for (const auto& [file, before] : report.read) {
        const auto now = LookAt(file);
        if (!now || now->kind != platform::FileKind::File || // what is gone by now was read whole
            (now->size == before.size && now->modifiedNs == before.modifiedNs))
            continue;
        report.changed.push_back(TextOf(file.filename()));
        ++report.failed;
    }
    report.read.clear();
}

void TellReport(Session& session, const SourceReport& report)
{
    if (!report.changed.empty())
        session.host.Tell(Tone::Error, GetMsg(Msg::SourcesChanged, {ShownNames(report.changed)}));
    std::vector<std::string> words;
    const auto add = [&](const std::vector<std::string>& names, Message row) {
        if (!names.empty())
            words.push_back(GetMsg(row, {ShownNames(names)}));
    };
    add(report.leftOut, Msg::SameNameLeftOut);
    add(report.renamed, Msg::KeptUnderFreeName);
    add(report.notFiles, Msg::NoFilesLeftOut);
    add(report.ledOut, Msg::LedOutLeftOut);
    add(report.twice, Msg::TwiceInPackage);
    if (!words.empty())
        session.host.Tell(Tone::Warning,
                          Join(words, std::string{lineBreak} + std::string{lineBreak}));
}

} // namespace kestrova
