#include "editor/trle_registry.h"

#include "core/files.h"
#include "core/text.h"
#include "editor/file_names.h"
#include "editor/folder_test.h"
#include "editor/setup_names.h"
#include "editor/wine_prefixes.h"
#include "formats/wine_registry.h"
#include "tools/program_launch.h"
#include "tools/run_to_end.h"
#include "tools/wine_paths.h"

namespace kestrova
{

namespace
{

/// A registry has some megabytes; what is larger is none.
constexpr std::uint64_t longestRegistry = UINT64_C(64) << 20;
/// Wine makes a prefix up to date first when it is newer than the prefix.
constexpr std::chrono::minutes longestReg{3};

/// The folder that one file of a registry names; empty when it names none.
Path FolderIn(const Path& file, const Path& prefix)
{
    // What cannot be read says nothing.
    const std::string registry = ReadWholeFile(file, longestRegistry).ValueOr({});
    for (const std::string_view key : {OnDisk::AppPathsKey, OnDisk::AppPathsKey32}) {
        const std::string value = DefaultValueOf(registry, key).value_or(std::string{});
        const Path place = PathInPrefix(prefix, value);
        if (place.empty())
            continue;
        const bool isProgram = FindFolded(value, OnDisk::ExeEnding) != std::string::npos;
        return isProgram ? place.parent_path() : place;
    }
    return {};
}

} // namespace

std::vector<RegisteredEditor> RegisteredEditors(const Folders& folders)
{
    std::vector<RegisteredEditor> found;
    for (const Path& prefix : KnownPrefixes(folders))
        for (const std::string_view file : {OnDisk::SystemRegistry, OnDisk::UserRegistry})
            if (const Path folder = FolderIn(prefix / file, prefix); !folder.empty())
                found.push_back({folder, prefix});
    return found;
}

Path TrlePathFromRegistry(const Folders& folders)
{
    const auto found = RegisteredEditors(folders);
    for (const RegisteredEditor& editor : found)
        if (const auto lacks = WhatTrleLacks(editor.folder); lacks && lacks->empty())
            return editor.folder;
    return found.empty() ? Path{} : found.front().folder;
}

Status RegisterEditor(const Tools& tools, const Folders& folders, const Path& trle,
                      ProgressScope& progress)
{
    Path prefix = PrefixAbove(trle);
    if (prefix.empty()) {
        const auto known = KnownPrefixes(folders);
        if (known.empty())
            return {};
        prefix = known.front();
    }
    const std::string program =
        WindowsPath(prefix, ResolvePath(InFolder(trle, OnDisk::RoomEditor)));
    auto launch =
        LaunchInPrefix(tools, prefix,
                       {std::string{OnDisk::RegistryTool}, "add",
                        std::string{OnDisk::AppPathsOfMachine}, "/ve", "/d", program, "/f"});
    if (!launch)
        return launch.Error();
    ToolOrder order;
    order.launch = std::move(*launch);
    order.name = OnDisk::RegistryTool;
    order.limit = longestReg;
    ToolRun run{std::move(order)};
    if (auto started = run.Start(); !started)
        return started;
    const WatchedRun watched{run, &progress, true};
    RunToEnds({&watched, 1});
    const ToolReport& report = run.Report();
    if (!report.status)
        return report.status;
    if (report.end.signal != 0 || report.end.code != 0)
        return Failure{ErrorCode::NotDone, TextOf(trle), {}, report.lastLines};
    return {};
}

} // namespace kestrova
