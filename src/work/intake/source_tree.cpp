#include "intake/source_tree.h"

#include "core/file_kinds.h"
#include "core/text.h"
#include "intake/file_names.h"
#include "words/sources.h"

#include <algorithm>
#include <map>
#include <set>

namespace kestrova
{

namespace
{

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

} // namespace

Result<Tree> TreeOfSource(Host& host, const Path& source, std::string_view ending,
                          Subfolders subfolders, ProgressScope& progress,
                          std::vector<Failure>* notRead)
{
    const auto folders = ListSubfolders(source);
    if (!folders)
        return folders.Error();
    const bool deeper = !folders->empty() &&
                        (subfolders == Subfolders::Take ||
                         host.AskYesNo(GetMsg(Msg::AskSubfolders,
                                              {'"' + TextOf(source.filename()) + '"',
                                               std::string{lineBreak} + std::string{lineBreak}})));
    if (!deeper) {
        const auto files = ListFiles(source, "*" + std::string{ending});
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

Result<std::vector<Path>> FilesOfSource(Host& host, const Path& source, std::string_view ending,
                                        Subfolders subfolders, ProgressScope& progress)
{
    auto tree = TreeOfSource(host, source, ending, subfolders, progress, nullptr);
    if (!tree)
        return tree.Error();
    return std::move(tree->files);
}

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

} // namespace kestrova
