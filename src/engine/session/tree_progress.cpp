#include "session/tree_progress.h"

#include "core/look.h"
#include "core/removal.h"
#include "session/cleared_progress.h"
#include "words/common.h"
#include "words/session.h"

namespace kestrova
{

std::unique_ptr<ProgressScope> BeginScanning(Host& host)
{
    return host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::ScanningFiles));
}

Status RemoveTreeWithProgress(const Path& folder, ProgressScope& progress)
{
    progress.SetLabel(GetMsg(Msg::ScanningFiles));
    progress.SetBar(0, 0);
    const auto alive = [&] { return progress.Step(), true; };
    auto tree = ScanTree(folder, alive);
    if (!tree) // a path that is too long, say; the removal needs none
        tree = Tree{{folder}, {}};
    progress.SetLabel(GetMsg(Msg::RemovingFiles));
    for (std::size_t i = 0; i < tree->files.size(); ++i) {
        if (const auto failure = platform::Unlink(tree->files[i]);
            failure && failure != std::errc::no_such_file_or_directory) {
            progress.SetLabel(GetMsg(Msg::ErrorRemovingFiles));
            return Saying(GetMsg(Msg::ErrorRemovingFile) + TextOf(tree->files[i]),
                          MakeFailure(ErrorCode::CannotDelete, TextOf(tree->files[i]), failure));
        }
        progress.SetBar(i + 1, tree->files.size());
        progress.Step();
    }
    progress.SetLabel(GetMsg(Msg::RemovingFolders));
    for (std::size_t i = tree->folders.size(); i-- > 0;) {
        // What a listing does not show (links, staged leftovers) goes with its folder.
        if (auto status = RemoveTree(tree->folders[i], alive); !status)
            return Saying(GetMsg(Msg::ErrorDeletingFolder) + TextOf(tree->folders[i]), status);
        progress.SetBar(i, tree->folders.size());
        progress.Step();
    }
    ClearProgress(progress);
    return {};
}

Status CopyTreeWithProgress(const Path& source, const Path& target, ProgressScope* progress,
                            Verify verify)
{
    const Path root = ResolvePath(source);
    const auto alive = [&] { return progress == nullptr || (progress->Step(), true); };
    const auto tree = ScanTree(root, alive);
    if (!tree)
        return Saying(GetMsg(Msg::ErrorCopyingFileTo, {TextOf(root)}) + TextOf(target) + "'",
                      tree.Error());
    std::uint64_t total = 0;
    for (const Path& file : tree->files)
        total += platform::FactsOf(file).size;
    for (const Path& folder : tree->folders) {
        const Path relative = folder.lexically_relative(root);
        const Path place = relative == "." ? target : target / relative;
        if (auto status = MakeFolders(place); !status)
            return Saying(GetMsg(Msg::CannotCreateFolder, {TextOf(place)}), status);
    }
    std::uint64_t done = 0;
    for (const Path& file : tree->files) {
        const Path place = target / file.lexically_relative(root);
        CopyOptions options;
        options.verify = verify;
        options.progress = [&](std::uint64_t bytes) {
            if (progress != nullptr)
                progress->SetBar(done + bytes, total);
            return alive();
        };
        if (auto status = CopyFileOver(file, place, options); !status)
            return Saying(GetMsg(Msg::ErrorCopyingFileTo, {TextOf(file)}) + TextOf(place) + "'",
                          status);
        done += platform::FactsOf(place).size;
        if (progress != nullptr)
            progress->SetBar(done, total);
        alive();
    }
    return {};
}

} // namespace kestrova
