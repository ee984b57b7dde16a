#include "intake/package_sources.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/removal.h"
#include "intake/file_names.h"
#include "intake/file_placing.h"
#include "intake/source_tree.h"
#include "intake/stored_sources.h"
#include "intake/unpacked_ahead.h"
#include "intake/unpacking_place.h"
#include "packages/package_tools.h"
#include "packages/unpack_staging.h"
#include "packages/unzip.h"
#include "session/cleared_progress.h"
#include "tools/tools.h"
#include "words/common.h"
#include "words/intake.h"
#include "words/levels.h"
#include "words/sources.h"
#include "words/storage.h"

#include <algorithm>

namespace kestrova
{

namespace
{

const Path& UnpackingPlaceOf(const Folders& folders, SourceReport& report)
{
    if (report.unpacking == nullptr)
        report.unpacking = std::make_shared<WorkFolder>(UnpackingFolder(folders));
    return report.unpacking->Folder();
}

/// What unpacking a package brought to light goes into the report of all sources, and is told where
/// the person must know it.
void TakeUnpacked(Host& host, const Path& package, const UnpackReport& unpacked, const Amount& came,
                  SourceReport& report)
{
    report.came.entries += came.entries;
    report.came.bytes += came.bytes;
    if (!unpacked.namesAs.empty())
        report.namesAs = unpacked.namesAs;
    const auto append = [](std::vector<std::string>& to, const std::vector<std::string>& from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    if (!unpacked.lost.empty()) {
        ++report.failed;
        host.Tell(Tone::Error, GetMsg(Msg::PackagePartsLost,
                                      {TextOf(package.filename()), ShownNames(unpacked.lost)}));
    }
    append(report.notFiles, unpacked.notFiles);
    for (const RenamedFile& file : unpacked.renamed)
        report.renamed.push_back(GetMsg(Msg::RenamedPair, {file.name, file.now}));
    append(report.ledOut, unpacked.ledOut);
    append(report.twice, unpacked.twice);
}

Status Unpack(Host& host, Machine& machine, const Tools& tools, const Path& package,
              const Path& folder, ProgressScope& progress, const SourceOptions& source,
              SourceReport& report)
{
    progress.SetLabel(GetMsg(Msg::UnzippingPackage, {TextOf(package.filename())}));
    if (!IsReadyToUnpack(folder))
        if (auto status = ClearPlace(folder); !status)
            return status;
    ToolProgressState state{&progress};
    state.quiet = true;
    state.tell = [&](const std::string& text) { host.Tell(Tone::Plain, text); };
    progress.AllowStop();
    UnpackGuard guard{machine, package, folder, source.limits};
    UnpackReport unpacked;
    UnzipOptions options;
    options.guard = &guard;
    options.namesAs = source.namesAs;
    options.report = &unpacked;
    options.keepStaging = true;
    options.keepWhole = source.keepWhole;
    const Status done = UnzipWithProgress(tools, package, folder, options, state);
    TakeUnpacked(host, package, done ? unpacked : UnpackReport{}, guard.Came(), report);
    return done;
}

/// A single file in stored form.
Status ExpandSource(Host& host, Machine& machine, const Folders& folders, const Path& source,
                    const Path& folder, const SourceOptions& options, ProgressScope& progress,
                    SourceReport& report)
{
    const WorkFolder expanded{FreshPlaceIn(folders.program)};
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
        if (auto status = ExpandStored(machine, file, next, limit, progress); !status)
            return status;
        report.expandedBytes += FileSize(next);
        file = next;
    }
    return PutFile(host, file, folder, {options.replaceByFile, false, {}}, progress, report);
}

Status UnzipSource(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                   const Path& package, const Path& folder, const SourceOptions& options,
                   ProgressScope& progress, SourceReport& report)
{
    auto ahead = options.ahead == nullptr ? std::nullopt : options.ahead->Take(package, progress);
    if (ahead) {
        TakeUnpacked(host, package, ahead->report, ahead->came, report);
        report.unpacking = std::move(ahead->place);
    }
    const Path& unpacked = UnpackingPlaceOf(folders, report);
    if (!ahead)
        if (auto status =
                Unpack(host, machine, tools, package, unpacked, progress, options, report);
            !status)
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
    if (auto status = ExpandStoredFiles(machine, tree->files,
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
        if (auto status = PutFile(host, files[i], folder, placing, progress, report); !status)
            return status;
        progress.SetBar(i + 1, files.size());
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, TextOf(package));
    }
    return {};
}

} // namespace

std::string LevelNameFrom(const Path& source)
{
    std::string name = BaseNameOf(Readable(source.filename().native()));
    if (IsPackage(source) && EndsWithName(name, OnDisk::EndingTar))
        name = StripExtension(name);
    return name;
}

Status CopyOrUnzipSource(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                         const Path& source, const Path& folder, const SourceOptions& options,
                         ProgressScope& progress, SourceReport& report)
{
    if (const auto before = LookAt(source)) // otherwise the copy says so
        report.read.emplace_back(source, *before);
    if (IsPackage(source))
        return UnzipSource(host, machine, folders, tools, source, folder, options, progress,
                           report);
    progress.SetLabel(GetMsg(Msg::CopyFileInProgress));
    if (IsStoredForm(source))
        return ExpandSource(host, machine, folders, source, folder, options, progress, report);
    return PutFile(host, source, folder, {options.replaceByFile, true, {}}, progress, report);
}

Status AddFile(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
               const Path& source, const Path& folder, const SourceOptions& options,
               ProgressScope& progress, SourceReport& report)
{
    const bool package = IsPackage(source);
    progress.SetLabel(GetMsg(package ? Msg::UnzippingFiles : Msg::FileCopyLabel));
    if (package)
        report.packages.push_back(source);
    const auto status =
        CopyOrUnzipSource(host, machine, folders, tools, source, folder, options, progress, report);
    ClearProgress(progress);
    if (status || IsStop(status))
        return status;
    ++report.failed;
    TellSourceFailure(host, GetMsg(Msg::ErrorCopyingOrUnzipping) + TextOf(source), status.Error());
    return {};
}

} // namespace kestrova
