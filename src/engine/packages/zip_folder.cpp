#include "packages/zip_folder.h"

#include "core/file_kinds.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "packages/package_tools.h"
#include "packages/zip_names.h"
#include "packages/zip_writer.h"
#include "platform/places.h"
#include "session/telling.h"
#include "words/common.h"
#include "words/packages.h"

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

/// True for a tool of the person's own, which is to do the work itself.
bool IsOwnTool(const Tools& tools, const Path& program)
{
    return program.parent_path() == platform::AbsolutePath(ResolvePath(tools.programFolder));
}

/// What the system's tool would do, done here on all cores, with that tool's lines and progress.
/// False when it is the tool's turn.
Result<bool> PackHere(const Path& zip, const std::vector<Path>& files,
                      const ToolProgressState& state)
{
    const auto handler = GestioneZip(ZipTool().marks, files.size());
    const auto added = [&](const std::string& line) {
        // At the last name the tool would be stopped, since all is in the zip then.
        const LineAnswer answer = handler->Feed(line);
        if (state.progress != nullptr && !state.quiet)
            state.progress->SetLabel(std::string{Trim(line)});
        if (answer.done)
            SetProgressPercent(state.progress, answer.total, *answer.done);
        return true;
    };
    const auto packed = WriteZip(
        zip, files, added, [&] { return state.progress == nullptr || state.progress->Step(); });
    ClearToolProgress(state);
    return packed;
}

} // namespace

Status ZipFolder(const Tools& tools, const Path& zip, const Path& folder,
                 const ToolProgressState& state)
{
    const PackTool& packer = ZipTool();
    const Path program = FindTool(tools, packer.tool);
    if (program.empty())
        return Failure{ErrorCode::Missing,
                       TextOf(tools.programFolder),
                       InstallHint(tools, packer.tool),
                       {},
                       GetMsg(Msg::ZipProgramMissing) + TextOf(tools.programFolder)};
    const Path target = platform::AbsolutePath(ResolvePath(zip));
    const Path source = platform::AbsolutePath(ResolvePath(folder));
    if (auto status = DeleteFile(target); !status)
        return Saying(GetMsg(Msg::ErrorRemovingFile) + TextOf(target), status);
    const auto listed = ListFiles(source, OnDisk::PatAllFiles);
    if (!listed)
        return FolderNotRead(listed.Error());
    const std::vector<Path>& files = *listed;
    if (!IsOwnTool(tools, program)) {
        const auto packed = PackHere(target, files, state);
        if (!packed)
            return packed.Error();
        if (*packed)
            return {};
    }
    const PackRuns runs = RunsFor(files);

    ToolWork work{.tool = packer.tool,
                  .parser = [&] { return GestioneZip(packer.marks, files.size()); },
                  .folder = source};
    ToolReport report;
    Status packed;
    if (!runs.list.empty() || files.empty()) {
        work.arguments = packer.pack(target, {});
        work.input = runs.list;
        packed = RunTool(tools, work, state, report);
        // The zip appears under its name when all is in it.
        if (!packed && FileExists(target))
            packed = {};
    }
    work.input.reset();
    for (const auto& names : runs.others) {
        work.arguments = packer.pack(target, names);
        if (packed)
            packed = RunTool(tools, work, state, report);
    }
    ClearToolProgress(state);
    if (!packed && FileExists(target))
        (void)DeleteFile(target); // some of the files lack; the failure that is told says so
    if (packed && !FileExists(target))
        return Failure{ErrorCode::NotDone, {}, {}, report.lastLines, report.output};
    return packed;
}

namespace
{

/// The content is on the disk when it answers.
Status FlushFile(const Path& file)
{
    platform::File opened;
    auto failure = platform::File::OpenForUpdate(file, opened);
    if (!failure)
        failure = opened.Sync();
    if (failure)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(file), failure);
    return {};
}

} // namespace

namespace
{

/// Whether a file can be made in that place; the tool says less about why it cannot.
Status TryPlace(const Path& staged)
{
    platform::File file;
    if (const auto failure = platform::File::CreateNew(staged, file))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(staged.parent_path()), failure);
    return {};
}

} // namespace

Status ReplaceZip(const Tools& tools, const Path& target, const Path& folder,
                  const ToolProgressState& state)
{
    const Path staged = StagedNameFor(target).native() + std::string{OnDisk::EndingZip};
    Status packed = TryPlace(staged);
    if (!packed)
        return packed;
    packed = ZipFolder(tools, staged, folder, state); // which removes the trial first
    if (packed)
        packed = MarkUtf8Names(staged);
    if (packed)
        packed = FlushFile(staged);
    if (packed) {
        const platform::FileFacts old = platform::FactsOf(target);
        auto failure = old.kind == platform::FileKind::File ? platform::SetMode(staged, old.mode)
                                                            : std::error_code{};
        if (!failure)
            failure = platform::Rename(staged, target);
        if (failure)
            packed = MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
    }
    if (!packed)
        (void)DeleteFile(staged); // unlisted, and of no use to anybody
    return packed;
}

} // namespace kestrova
