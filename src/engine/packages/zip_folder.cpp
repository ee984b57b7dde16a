#include "packages/zip_folder.h"

#include "core/file_kinds.h"
#include "packages/package_tools.h"
#include "platform/places.h"
#include "words/common.h"
#include "words/packages.h"
#include "words/session.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// Well below what the system takes as arguments of one program.
constexpr std::size_t mostArgumentBytes = 512 * 1024;

/// A list of names, a line each, cannot carry these.
bool NeedsArgument(const std::string& name)
{
    return std::any_of(name.begin(), name.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < ' '; });
}

/// The runs that it takes: names by the list in the first, names as arguments in the others.
struct PackRuns {
    std::string list;
    std::vector<std::vector<std::string>> others;
};

PackRuns RunsFor(const std::vector<Path>& files)
{
    PackRuns runs;
    std::size_t bytes = 0;
    for (const Path& file : files) {
        // No name begins with a dash this way.
        std::string name = "./" + file.filename().native();
        if (!NeedsArgument(name)) {
            runs.list += name + "\n";
            continue;
        }
        bytes += name.size();
        if (runs.others.empty() || bytes > mostArgumentBytes) {
            runs.others.emplace_back();
            bytes = name.size();
        }
        runs.others.back().push_back(std::move(name));
    }
    return runs;
}

} // namespace

bool ZipFolder(const Tools& tools, Host& host, const Path& zip, const Path& folder,
               ToolProgressState& state)
{
    const PackTool& packer = ZipTool();
    if (FindTool(tools, packer.tool).empty()) {
        state.Fail(ToolTrouble::Missing, {});
        host.Tell(Tone::Error, GetMsg(Msg::ZipProgramMissing) + TextOf(tools.programFolder),
                  InstallHint(tools, packer.tool));
        return false;
    }
    const Path target = platform::AbsolutePath(ResolvePath(zip));
    const Path source = platform::AbsolutePath(ResolvePath(folder));
    if (const auto status = DeleteFile(target); !status)
        return state.Fail(ToolTrouble::Content, GetMsg(Msg::ErrorRemovingFile) + TextOf(target),
                          status.Error().reason);
    const auto listed = ListFiles(source, OnDisk::PatAllFiles);
    if (!listed)
        return state.Fail(ToolTrouble::Content,
                          GetMsg(Msg::FolderNotRead, {listed.Error().subject}),
                          listed.Error().reason);
    const std::vector<Path>& files = *listed;
    const PackRuns runs = RunsFor(files);

    ToolWork work{.tool = packer.tool,
                  .parser = [&] { return GestioneZip(packer.marks, files.size()); },
                  .folder = source};
    bool packed = true;
    if (!runs.list.empty() || files.empty()) {
        work.arguments = packer.pack(target, {});
        work.input = runs.list;
        packed = RunTool(tools, work, state);
        // The zip appears under its name when all is in it.
        if (!packed && FileExists(target)) {
            packed = true;
            state.trouble = ToolTrouble::None;
            state.error.clear();
        }
    }
    work.input.reset();
    for (const auto& names : runs.others) {
        work.arguments = packer.pack(target, names);
        packed = packed && RunTool(tools, work, state);
    }
    ClearToolProgress(state);
    if (!packed && FileExists(target))
        (void)DeleteFile(target); // some of the files lack; the failure that is told says so
    if (packed && !FileExists(target))
        return state.Fail(ToolTrouble::NoOutput, state.output, state.details);
    return packed;
}

} // namespace kestrova
