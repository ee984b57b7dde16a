#include "session/zip_files.h"

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

/// The file's name, or the nearest free one.
Path ReadableName(const Path& folder, const std::string& name)
{
    const Path readable = folder / Readable(name);
    Path free = readable;
    for (int i = 2; platform::FactsOfLink(free).kind != platform::FileKind::Missing; ++i)
        free = folder /
               (readable.stem().native() + "_" + std::to_string(i) + readable.extension().native());
    return free;
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
    entries.clear();
    const Path source = std::filesystem::absolute(ResolvePath(package));
    const ToolRow& row = RowOf(UnpackerOf(source));
    if (!RunToolBatch(session, row.id, row.list(source), listLimit, state))
        return false;
    entries = row.parseList(state.output);
    return true;
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
    std::vector<PackageEntry> entries;
    if (!ListZip(session, source, entries, state))
        return false;

    const ToolRow& row = RowOf(UnpackerOf(source));
    ToolRun run{row.id};
    run.arguments = row.unpack(source, target, options.junkPaths);
    run.handler = Msg::HandlerUnzip;
    // Entries of size 0 are folders.
    run.total = static_cast<std::uint64_t>(std::count_if(
        entries.begin(), entries.end(), [](const PackageEntry& entry) { return entry.size != 0; }));
    run.watch = options.watch;
    const bool unpacked = RunTool(session, run, state);
    MakePlain(target, state.progress);
    if (unpacked)
        ClearToolProgress(state);
    return unpacked;
}

bool UnzipQuick(Session& session, const Path& package, const Path& folder,
                const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = std::filesystem::absolute(ResolvePath(package));
    const Path target = std::filesystem::absolute(ResolvePath(folder));
    const ToolRow& row = RowOf(UnpackerOf(source));
    if (FindTool(session, row).empty()) {
        const std::string place = TextOf(session.programFolder);
        session.host.Tell(Tone::Error, GetMsg(Msg::UnzipProgramMissing, {lineBreak}) + place,
                          GetMsg(Msg::ToolInstallHint, {row.name, place, row.package}));
        return false;
    }
    if (!FileExists(source) || !FolderExists(target))
        return false;
    if (!CleanFolder(target, options)) {
        session.host.Tell(Tone::Error, GetMsg(Msg::ErrorDeletingOldFiles) + TextOf(target));
        return false;
    }
    ToolRun run{row.id};
    run.arguments = row.unpack(source, target, options.junkPaths);
    run.watch = options.watch;
    (void)RunTool(session, run, state); // the caller looks for the files
    MakePlain(target, state.progress);
    return true;
}

void MakePlain(const Path& folder, ProgressScope* progress)
{
    constexpr std::uint32_t ownerAll = 0700;
    constexpr std::uint32_t ownerReadWrite = 0600;
    std::vector<Path> folders{folder};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        // What cannot be mended here shows when the file is used; nothing is lost by going on.
        (void)platform::ListFolder(place, entries);
        for (const platform::FolderEntry& entry : entries) {
            // Mended to the end, whatever Stop says: what lies there is not to be trusted yet.
            if (progress != nullptr)
                (void)progress->Step();
            Path path = place / entry.name;
            if (entry.kind != platform::FileKind::File &&
                entry.kind != platform::FileKind::Folder) {
                (void)platform::Unlink(path);
                continue;
            }
            const bool isFolder = entry.kind == platform::FileKind::Folder;
            const std::uint32_t mode = platform::FactsOfLink(path).mode;
            const std::uint32_t wanted = mode | (isFolder ? ownerAll : ownerReadWrite);
            if (mode != wanted)
                (void)platform::SetMode(path, wanted & 0777);
            if (!IsUtf8(entry.name)) {
                const Path readable = ReadableName(place, entry.name);
                if (!platform::Rename(path, readable))
                    path = readable;
            }
            if (isFolder)
                folders.push_back(path);
        }
    }
}

} // namespace kestrova
