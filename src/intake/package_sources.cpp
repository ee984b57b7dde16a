#include "intake/package_sources.h"

#include "catalogue/message.h"
#include "session/name_list.h"
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

/// A free name for a file that gives its own to another one. A second `.dat` would count as a
/// language of the level, so there the number stands behind the ending.
Path FreeNameFor(const Path& file)
{
    const bool isData = EqualNames(file.extension().native(), RowText(Msg::EndingDat));
    const std::string head = isData ? file.filename().native() : file.stem().native();
    const std::string tail = isData ? std::string{} : file.extension().native();
    Path free;
    int number = 1;
    do
        free = file.parent_path() / (head + "_" + std::to_string(++number) + tail);
    while (!CaseTwins(free).empty());
    return free;
}

Status KeepUnderFreeName(const Path& file, SourceReport& report)
{
    const Path free = FreeNameFor(file);
    if (const auto failure = platform::Rename(file, free))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(free), failure);
    report.renamed.push_back(
        GetMsg(Msg::RenamedPair, {TextOf(file.filename()), TextOf(free.filename())}));
    return {};
}

/// How files come into the level's folder.
struct Placing {
    const Path& folder;
    Replace replace;
    bool keepSource;     ///< copied, otherwise moved
    const Path& package; ///< the one that they come from; a file may take its place
};

/// True when another file of the same content, or the person's word, leaves nothing to do.
Result<bool> MakeWay(Session& session, const Path& file, const Path& target, const Placing& placing,
                     SourceReport& report)
{
    if (target == placing.package || !FileExists(target) || SameContent(file, target))
        return false;
    // Of two that come in together the second one must not go over the first without a word.
    const bool cameNow = report.placed.contains(FoldCase(target.filename().native()));
    if (placing.replace == Replace::KeepBoth) {
        if (auto kept = KeepUnderFreeName(target, report); !kept)
            return kept.Error();
    } else if (placing.replace == Replace::Ask || cameNow) {
        return !ConfirmReplace(session, file, target);
    }
    return false;
}

Status PutFile(Session& session, const Path& file, const Placing& placing, ProgressScope& progress,
               SourceReport& report)
{
    const Path target = ResolvePath(placing.folder / ListableName(file.filename().native()));
    const auto stays = MakeWay(session, file, target, placing, report);
    if (!stays)
        return stays.Error();
    if (*stays)
        return {};
    Status put;
    if (placing.keepSource) {
        CopyOptions options;
        options.rights = plainRights;
        options.progress = [&](std::uint64_t) { return progress.Step(); };
        put = CopyFileOver(file, target, options);
    } else {
        put = MoveFileOver(file, target);
    }
    if (!put)
        return put;
    const std::string name = FoldCase(target.filename().native());
    report.placed.insert(name);
    if (!placing.keepSource)
        report.unpacked.insert(name);
    return DropStoredForm(target);
}

bool IsMyStop(const ToolProgressState& state)
{
    return state.error == GetMsg(Msg::BreakUser);
}

Status Unpack(Session& session, const Path& package, const Path& folder, ProgressScope& progress,
              const SourceOptions& source, SourceReport& report)
{
    progress.SetLabel(GetMsg(Msg::UnzippingPackage, {TextOf(package.filename())}));
    if (FolderExists(folder))
        if (auto status = RemoveTree(folder); !status)
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
    if (!UnzipWithProgress(session, package, folder, options, state)) {
        if (IsMyStop(state))
            return MakeFailure(ErrorCode::Stopped, TextOf(package));
        return Failure{ErrorCode::Damaged, state.error, state.details};
    }
    if (!unpacked.namesAs.empty())
        report.namesAs = unpacked.namesAs;
    const auto append = [](std::vector<std::string>& to, const std::vector<std::string>& from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    append(report.notFiles, unpacked.notFiles);
    append(report.twice, unpacked.twice);
    return {};
}

/// The first of each name; the others go to the report.
std::vector<Path> FirstOfEachName(const Tree& tree, SourceReport& report)
{
    std::map<std::string, Path> byName;
    std::vector<Path> files;
    for (const Path& file : tree.files) {
        const auto [known, isNew] =
            byName.emplace(FoldCase(ListableName(file.filename().native())), file);
        if (isNew)
            files.push_back(file);
        else if (!SameContent(known->second, file))
            report.leftOut.push_back(TextOf(file.lexically_relative(tree.folders.front())));
    }
    return files;
}

Status UnzipSource(Session& session, const Path& package, const Path& folder,
                   const SourceOptions& options, ProgressScope& progress, SourceReport& report)
{
    const UnpackedFiles unpacked{session};
    if (auto status = Unpack(session, package, unpacked.Folder(), progress, options, report);
        !status)
        return status;
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    const auto tree = ScanTree(unpacked.Folder(), [&] { return progress.Step(); });
    if (!tree)
        return tree.Error();
    std::vector<Path> files = FirstOfEachName(*tree, report);
    // The file that takes the package's own place comes last: until then the package is whole.
    std::stable_partition(files.begin(), files.end(), [&](const Path& file) {
        return ResolvePath(folder / ListableName(file.filename().native())) != package;
    });
    const Placing placing{folder, options.replace, false, package};
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (auto status = PutFile(session, files[i], placing, progress, report); !status)
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

void TellFailedFiles(Session& session, const std::vector<std::string>& names, const Path& folder,
                     const Failure& first)
{
    TellSourceFailure(session,
                      GetMsg(Msg::ErrorCopyingFileIn, {ShownNames(names)}) + TextOf(folder) +
                          GetMsg(Msg::ClosingBracket),
                      first);
}

/// The folders that count, and the files in them.
Result<Tree> TreeOfSource(Session& session, const Path& source, const std::string& ending,
                          Subfolders subfolders, ProgressScope& progress)
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
        return Tree{{source}, ListFiles(source, "*" + ending)};
    }
    auto tree = ScanTree(source, [&] { return progress.Step(); });
    if (tree && ending != RowText(Msg::EveryEnding))
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
    return InFolder(session.programFolder, RowText(Msg::DirTempZip));
}

bool IsPackage(const Path& file)
{
    return EndsWithName(file.filename().native(), RowText(Msg::EndingZip)) ||
           EndsWithName(file.filename().native(), RowText(Msg::EndingZipx)) ||
           UnpackerOf(file) == ToolId::Bsdtar;
}

std::string LevelNameFrom(const Path& source)
{
    std::string name = BaseNameOf(Readable(source.filename().native()));
    if (IsPackage(source) && EndsWithName(name, RowText(Msg::EndingTar)))
        name = StripExtension(name);
    return name;
}

Status CopyOrUnzipSource(Session& session, const Path& source, const Path& folder,
                         const SourceOptions& options, ProgressScope& progress,
                         SourceReport& report)
{
    if (IsPackage(source))
        return UnzipSource(session, source, folder, options, progress, report);
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    const Path none;
    return PutFile(session, source, {folder, Replace::Silent, true, none}, progress, report);
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
    auto tree = TreeOfSource(session, source, ending, subfolders, progress);
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
    auto tree = TreeOfSource(session, source, GetMsg(Msg::EveryEnding), subfolders, progress);
    if (!tree) {
        report.stopped = tree.Error().code == ErrorCode::Stopped;
        ++report.failed;
        ClearProgress(progress);
        if (!report.stopped)
            TellFailure(session, GetMsg(Msg::SourceFolderNotRead, {TextOf(source)}), tree.Error());
        return;
    }
    // A folder that holds the level's own gives everything but that.
    const Path own = ResolvePath(folder);
    const auto isOwn = [&](const Path& path) { return path == own || IsBelow(path, own); };
    std::erase_if(tree->files, isOwn);
    std::erase_if(tree->folders, isOwn);
    for (std::string& name : NotFilesIn(*tree))
        report.notFiles.push_back(std::move(name));

    const std::vector<Path> first = FirstOfEachName(*tree, report);
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

void TellReport(Session& session, const SourceReport& report)
{
    std::vector<std::string> words;
    const auto add = [&](const std::vector<std::string>& names, Msg row) {
        if (!names.empty())
            words.push_back(GetMsg(row, {ShownNames(names)}));
    };
    add(report.leftOut, Msg::SameNameLeftOut);
    add(report.renamed, Msg::KeptUnderFreeName);
    add(report.notFiles, Msg::NoFilesLeftOut);
    add(report.twice, Msg::TwiceInPackage);
    if (!words.empty())
        session.host.Tell(Tone::Warning,
                          Join(words, std::string{lineBreak} + std::string{lineBreak}));
}

} // namespace kestrova
