#include "intake/folder_sources.h"

#include "core/inside.h"
#include "core/look.h"
#include "core/name_list.h"
#include "intake/file_names.h"
#include "packages/package_tools.h"
#include "platform/real_path.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/intake.h"
#include "words/levels.h"
#include "words/sources.h"
#include "words/storage.h"

namespace kestrova
{

namespace
{

void TellFailedFiles(Host& host, const std::vector<std::string>& names, const Path& folder,
                     const Failure& first)
{
    TellSourceFailure(host,
                      GetMsg(Msg::ErrorCopyingFileIn, {ShownNames(names)}) + TextOf(folder) +
                          GetMsg(Msg::ClosingBracket),
                      first);
}

} // namespace

Status AddFilesFromFolder(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                          const Path& given, const Path& folder, const SourceOptions& options,
                          ProgressScope& progress, Subfolders subfolders, SourceReport& report)
{
    progress.AllowStop();
    progress.SetLabel(GetMsg(Msg::CopyingFilesLabel));
    const Path source = ResolvePath(given);
    std::vector<Failure> notRead;
    auto tree = TreeOfSource(host, source, OnDisk::EveryEnding, subfolders, progress, &notRead);
    if (!tree) {
        ClearProgress(progress);
        if (IsStop(StatusOf(tree)))
            return tree.Error();
        ++report.failed;
        TellFailure(host, GetMsg(Msg::SourceFolderNotRead, {TextOf(source)}), tree.Error());
        return {};
    }
    report.failed += notRead.size();
    for (const Failure& failure : notRead)
        host.Tell(Tone::Error, GetMsg(Msg::SourceFolderNotRead, {failure.subject}), failure.reason);
    // A folder that holds the level's own gives everything but that.
    const Path own = ResolvePath(folder);
    const auto isOwn = [&](const Path& path) { return LiesInside(path, own); };
    std::erase_if(tree->files, isOwn);
    std::erase_if(tree->folders, isOwn);
    if (!options.leftOut.empty())
        std::erase_if(tree->files, [&](const Path& file) {
            return platform::IsSameFile(file, options.leftOut);
        });
    for (std::string& name : NotFilesIn(*tree))
        report.notFiles.push_back(std::move(name));

    const std::vector<Path> first = FirstOfEachName(*tree, progress, report);
    std::vector<std::string> failed;
    Failure firstFailure;
    Status stop;
    for (std::size_t i = 0; i < first.size() && stop; ++i) {
        if (IsPackage(first[i]))
            report.packages.push_back(first[i]);
        const auto status = CopyOrUnzipSource(host, machine, folders, tools, first[i], folder,
                                              options, progress, report);
        if (IsStop(status) || !progress.Step()) {
            stop = MakeFailure(ErrorCode::Stopped, TextOf(first[i]));
        } else if (!status) {
            if (failed.empty())
                firstFailure = status.Error();
            failed.push_back(TextOf(first[i].lexically_relative(source)));
        }
        progress.SetBar(i + 1, first.size());
    }
    ClearProgress(progress);
    report.failed += failed.size();
    if (!failed.empty())
        TellFailedFiles(host, failed, folder, firstFailure);
    return stop;
}

Status AddSource(Host& host, Machine& machine, const Folders& folders, const Tools& tools,
                 const Path& source, const Path& folder, const SourceOptions& options,
                 ProgressScope& progress, Subfolders subfolders, SourceReport& report)
{
    if (FolderExists(source))
        return AddFilesFromFolder(host, machine, folders, tools, source, folder, options, progress,
                                  subfolders, report);
    if (FileExists(source))
        return AddFile(host, machine, folders, tools, source, folder, options, progress, report);
    ++report.failed;
    const auto facts = LookAt(source);
    if (!facts) {
        TellFailure(host, GetMsg(Msg::SourceUnreadable), facts.Error());
        return {};
    }
    const bool isThere = facts->kind != platform::FileKind::Missing;
    host.Tell(Tone::Error,
              GetMsg(isThere ? Msg::SourceNoFile : Msg::SourceMissing, {TextOf(source)}));
    return {};
}

} // namespace kestrova
