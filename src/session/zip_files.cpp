#include "session/zip_files.h"

#include "core/parallel.h"
#include "session/zip_directory.h"

#include <algorithm>

namespace kestrova
{

namespace
{

constexpr std::chrono::seconds listLimit{20};
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

bool CleanFolder(const Path& folder, const UnzipOptions& options)
{
    return !options.cleanDestination || DeleteMatching(folder, RowText(Msg::PatAll));
}

/// The tool for a package, and the code page that its names are in where the tool must be told.
struct Unpacker {
    const ToolRow& row;
    std::string charset;
    /// What the program itself reads in a zip's directory; empty for another kind of package.
    std::vector<PackageEntry> entries;
};

std::vector<PackageEntry> EntriesOf(std::vector<ZipName> directory)
{
    std::vector<PackageEntry> entries;
    entries.reserve(directory.size());
    for (ZipName& name : directory)
        entries.push_back({std::move(name.bytes), name.size});
    return entries;
}

/// `unzip` takes names without a code page for those of one system and writes them in another
/// code page of its own; where that would spoil them the other tool unpacks.
Unpacker UnpackerFor(Session& session, const Path& package)
{
    const ToolRow& usual = RowOf(UnpackerOf(package));
    if (usual.id != ToolId::Unzip)
        return {usual, {}, {}};
    const ToolRow& other = RowOf(ToolId::Bsdtar);
    std::vector<ZipName> directory = ReadZipDirectory(package);
    std::string charset{CharsetOfNames(directory)};
    std::vector<PackageEntry> entries = EntriesOf(std::move(directory));
    if (charset.empty() || FindTool(session, other).empty())
        return {usual, {}, std::move(entries)};
    return {other, std::move(charset), std::move(entries)};
}

bool List(Session& session, const Unpacker& unpacker, const Path& package,
          std::vector<PackageEntry>& entries, ToolProgressState& state)
{
    entries.clear();
    const ToolRow& row = unpacker.row;
    if (!RunToolBatch(session, row.id, row.list(package, unpacker.charset), listLimit, state))
        return false;
    // A list of a million names takes longer than a window may stand still.
    RunOnAllCores(
        1, [&](std::size_t) { entries = row.parseList(state.output); },
        [&] { return state.progress == nullptr || (state.progress->Step(), true); });
    return true;
}

/// Where a package is unpacked before its files are moved in; nothing is in it.
Result<Path> EmptyStaging(const Path& folder)
{
    Path staging = InFolder(folder, RowText(Msg::FragUnpacking));
    // A link there is unlinked, never followed.
    if (platform::FactsOfLink(staging).kind == platform::FileKind::Folder) {
        MakePlain(staging); // a program that was killed left what a package had shut
        if (auto status = RemoveTree(staging); !status)
            return status.Error();
    } else {
        (void)platform::Unlink(staging);
    }
    if (auto status = MakeFolder(staging); !status)
        return status.Error();
    return staging;
}

/// Keeps the window alive without listening to Stop.
Heartbeat ToTheEnd(ProgressScope* progress)
{
    return [progress] { return progress == nullptr || (progress->Step(), true); };
}

void DropStaging(const Path& staging, ProgressScope* progress)
{
    MakePlain(staging, ToTheEnd(progress)); // folders that the package shut could not be removed
    (void)RemoveTree(staging, ToTheEnd(progress));
}

/// Runs the tool into a staging folder and moves in what came, `always` or when the tool did its
/// work.
bool UnpackInto(Session& session, const Unpacker& unpacker, const Path& package, const Path& folder,
                ToolRun run, const UnzipOptions& options, const std::vector<PackageEntry>& entries,
                bool always, ToolProgressState& state)
{
    const auto failed = [&](const Failure& failure) {
        state.error = GetMsg(Msg::UnpackNotMoved, {TextOf(package.filename())});
        state.details = failure.subject + ": " + failure.reason;
        return false;
    };
    const auto staging = EmptyStaging(folder);
    if (!staging)
        return failed(staging.Error());
    std::string stopped;
    if (options.guard != nullptr)
        run.watch = [&] { return stopped = options.guard->Watch(); };
    const bool flatten = options.junkPaths && (always || CollideWhenFlat(entries));
    run.arguments =
        unpacker.row.unpack(package, *staging, options.junkPaths && !flatten, unpacker.charset);
    const bool unpacked = RunTool(session, run, state);
    // What came within the last moments was not looked at yet.
    if (unpacked && options.guard != nullptr)
        state.error = stopped = options.guard->Look();
    if (!stopped.empty() || !(unpacked || always)) {
        DropStaging(*staging, state.progress);
        return false;
    }
    if (!MakePlain(*staging, [&] { return state.progress == nullptr || state.progress->Step(); })) {
        state.error = GetMsg(Msg::BreakUser);
        DropStaging(*staging, state.progress);
        return false;
    }
    const auto placed = PlaceUnpacked(*staging, folder, options.junkPaths, entries, state.progress);
    if (!placed) {
        DropStaging(*staging, state.progress);
        return failed(placed.Error());
    }
    return unpacked;
}

} // namespace

bool ZipFolder(Session& session, const Path& zip, const Path& folder, ToolProgressState& state)
{
    const ToolRow& row = RowOf(ToolId::Zip);
    if (FindTool(session, row).empty()) {
        const std::string place = TextOf(session.programFolder);
        session.host.Tell(Tone::Error, GetMsg(Msg::ZipProgramMissing) + place,
                          GetMsg(Msg::ToolInstallHint, {row.name, place, row.package}));
        return false;
    }
    const Path target = std::filesystem::absolute(ResolvePath(zip));
    const Path source = std::filesystem::absolute(ResolvePath(folder));
    if (const auto status = DeleteFile(target); !status) {
        state.error = GetMsg(Msg::ErrorRemovingFile) + TextOf(target);
        state.details = status.Error().reason;
        return false;
    }
    const std::vector<Path> files = ListFiles(source, RowText(Msg::PatAllFiles));
    const PackRuns runs = RunsFor(files);

    ToolRun run{ToolId::Zip};
    run.handler = Msg::HandlerZip;
    run.total = files.size();
    run.folder = source;
    bool packed = true;
    if (!runs.list.empty() || files.empty()) {
        run.arguments = row.pack(target, {});
        run.input = runs.list;
        packed = RunTool(session, run, state);
        // The zip appears under its name when all is in it.
        if (!packed && FileExists(target)) {
            packed = true;
            state.error.clear();
        }
    }
    run.input.reset();
    for (const auto& names : runs.others) {
        run.arguments = row.pack(target, names);
        packed = packed && RunTool(session, run, state);
    }
    ClearToolProgress(state);
    if (!packed && FileExists(target))
        (void)DeleteFile(target); // some of the files lack; the failure that is told says so
    if (packed && !FileExists(target)) {
        state.error = state.output;
        packed = false;
    }
    return packed;
}

bool ListZip(Session& session, const Path& package, std::vector<PackageEntry>& entries,
             ToolProgressState& state)
{
    const Path source = std::filesystem::absolute(ResolvePath(package));
    return List(session, UnpackerFor(session, source), source, entries, state);
}

bool UnzipWithProgress(Session& session, const Path& package, const Path& folder,
                       const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = std::filesystem::absolute(ResolvePath(package));
    const Path target = std::filesystem::absolute(ResolvePath(folder));
    if (const auto status = MakeFolders(target); !status) {
        state.error = GetMsg(Msg::CannotCreateFolder, {TextOf(target)});
        state.details = status.Error().reason;
        return false;
    }
    if (!CleanFolder(target, options)) {
        state.error = GetMsg(Msg::ErrorDeletingOldFiles) + TextOf(target);
        return false;
    }
    if (!state.quiet && state.progress != nullptr)
        state.progress->SetLabel(GetMsg(Msg::ExtractFileList) + TextOf(source.filename()));
    const Unpacker unpacker = UnpackerFor(session, source);
    std::vector<PackageEntry> entries;
    if (!List(session, unpacker, source, entries, state))
        return false;
    // A list can be made to say less than what comes out; so can the directory, in another way.
    if (options.guard != nullptr) {
        state.error = options.guard->Refuses(entries);
        if (state.error.empty())
            state.error = options.guard->Refuses(unpacker.entries);
        if (!state.error.empty())
            return false;
    }

    ToolRun run{unpacker.row.id};
    run.handler = Msg::HandlerUnzip;
    // Entries of size 0 are folders.
    run.total = static_cast<std::uint64_t>(std::count_if(
        entries.begin(), entries.end(), [](const PackageEntry& entry) { return entry.size != 0; }));
    const bool unpacked =
        UnpackInto(session, unpacker, source, target, run, options, entries, false, state);
    if (unpacked)
        ClearToolProgress(state);
    return unpacked;
}

bool UnzipQuick(Session& session, const Path& package, const Path& folder,
                const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = std::filesystem::absolute(ResolvePath(package));
    const Path target = std::filesystem::absolute(ResolvePath(folder));
    const ToolRow& usual = RowOf(UnpackerOf(source));
    if (FindTool(session, usual).empty()) {
        const std::string place = TextOf(session.programFolder);
        session.host.Tell(Tone::Error, GetMsg(Msg::UnzipProgramMissing, {lineBreak}) + place,
                          GetMsg(Msg::ToolInstallHint, {usual.name, place, usual.package}));
        return false;
    }
    if (!FileExists(source) || !FolderExists(target))
        return false;
    if (!CleanFolder(target, options)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::ErrorDeletingOldFiles) + TextOf(target));
        return false;
    }
    const Unpacker unpacker = UnpackerFor(session, source);
    // The caller looks for the files.
    (void)UnpackInto(session, unpacker, source, target, ToolRun{unpacker.row.id}, options, {}, true,
                     state);
    return true;
}

} // namespace kestrova
