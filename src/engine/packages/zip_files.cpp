#include "packages/zip_files.h"

#include "packages/tool_words.h"

#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/name_list.h"
#include "core/parallel.h"
#include "core/removal.h"
#include "formats/program_folder.h"
#include "packages/file_names.h"
#include "packages/package_plan.h"
#include "packages/small_zip.h"
#include "platform/places.h"
#include "words/common.h"
#include "words/packages.h"
#include "words/session.h"
#include "words/tools.h"

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
    return !options.cleanDestination || DeleteMatching(folder, OnDisk::PatAll);
}

/// True when the tool's words hold one of the row's, which are parted by `|`.
bool Says(const std::string& words, std::string_view row)
{
    const std::vector<std::string> parts = Split(row, '|');
    return std::any_of(parts.begin(), parts.end(), [&](const std::string& part) {
        return FindFolded(words, part) != std::string::npos;
    });
}

/// A tool that ran and did not do its work: what that means for the person, with the tool's own
/// words beside it. The answer is False.
bool JudgePackage(const ToolRow& row, const Path& package, ToolProgressState& state)
{
    if (state.error == GetMsg(Msg::NoTextOnOutput)) {
        state.details = state.error + std::string{lineBreak} + state.details;
        state.error = GetMsg(Msg::PackageEmpty, {TextOf(package.filename())});
        return false;
    }
    constexpr int lockedForUnzip = 82;
    constexpr int methodForUnzip = 81;
    constexpr int fullForUnzip = 50;
    const int code = state.end.code;
    if (state.error != GetMsg(Msg::ToolLeftOut, {row.name}) &&
        state.error != GetMsg(Msg::ToolEndedWithCode, {row.name, std::to_string(code)}))
        return false; // it was stopped, or never ran
    // `unzip` names each file on its way; only what it leaves out is a complaint.
    const std::string complaint =
        row.id == ToolId::Unzip ? ComplaintIn(row, state.output) : state.details;
    Message words = Msg::PackageDamaged;
    if (code == lockedForUnzip || Says(complaint, ToolSays::Locked))
        words = Msg::PackageLocked;
    else if (code == methodForUnzip || Says(complaint, ToolSays::Unknown))
        words = Msg::PackageMethod;
    else if (Says(state.details, ToolSays::Clash))
        words = Msg::PackageClash;
    else if (row.id == ToolId::Bsdtar && Says(complaint, ToolSays::LeadsOut))
        words = Msg::PackageLeadsOut;
    else if (row.id == ToolId::Bsdtar && Says(complaint, ToolSays::Names))
        words = Msg::PackageNames;
    else if (code == fullForUnzip || Says(complaint, ToolSays::Full))
        words = Msg::PackageNoRoom;
    state.details = state.error + std::string{lineBreak} + state.details;
    state.error = GetMsg(words, {TextOf(package.filename())});
    return false;
}

/// Before the listing of a compressed tape is there, all of it was expanded.
std::chrono::milliseconds ListLimit(ToolId tool, const Path& package)
{
    constexpr std::uint64_t megabyte = std::uint64_t{1} << 20;
    const std::chrono::seconds more{FileSize(package) / megabyte};
    return tool == ToolId::Unzip ? listLimit : listLimit + more;
}

/// The entries as the tool lists them, their names as text; with that, the page of their names is
/// in the plan.
bool List(Session& session, PackagePlan& plan, const Path& package, const std::string& namesAs,
          std::vector<PackageEntry>& entries, ToolProgressState& state)
{
    entries.clear();
    const ToolRow& row = RowOf(plan.tool);
    const auto list = [&](const std::string& page) {
        return RunToolBatch(session, row.id, row.list(package, page), ListLimit(row.id, package),
                            state);
    };
    bool listed = list(plan.page);
    // Of some kinds the tool gives no name without being told a code page; in this one every byte
    // is a letter, so that the bytes can be had back.
    constexpr const char* allBytes = "CP437";
    const bool nameless =
        !listed && !plan.isZip && plan.page.empty() && Says(state.details, ToolSays::Names);
    if (nameless)
        listed = list(allBytes);
    if (!listed)
        return JudgePackage(row, package, state);
    // A list of a million names takes longer than a window may stand still.
    RunOnAllCores(
        1, [&](std::size_t) { entries = row.parseList(state.output); },
        [&] { return state.progress == nullptr || (state.progress->Step(), true); });
    if (nameless)
        for (PackageEntry& entry : entries)
            entry.name = BytesIn(entry.name, allBytes);
    if (!plan.isZip)
        PlanNames(plan, entries, namesAs);
    if (nameless && plan.page.empty())
        plan.page = allBytes;
    ReadNames(entries, plan.page);
    return true;
}

/// What is neither a file nor a folder, by its place below `top`.
std::vector<std::string> NotFilesBelow(const Path& top)
{
    std::vector<std::string> names;
    std::vector<Path> folders{{}};
    while (!folders.empty()) {
        const Path place = std::move(folders.back());
        folders.pop_back();
        std::vector<platform::FolderEntry> entries;
        (void)platform::ListFolder(top / place, entries); // what is shut is opened later
        for (const platform::FolderEntry& entry : entries) {
            if (entry.kind == platform::FileKind::Folder)
                folders.push_back(place / entry.name);
            else if (entry.kind != platform::FileKind::File)
                names.push_back(TextOf(place / entry.name));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// A folder itself, and no link to one.
bool IsEmptyFolder(const Path& place)
{
    std::vector<platform::FolderEntry> entries;
    return platform::FactsOfLink(place).kind == platform::FileKind::Folder &&
           !platform::ListFolder(place, entries) && entries.empty();
}

/// Where a package is unpacked before its files are moved in; nothing is in it.
Result<Path> EmptyStaging(const Path& folder)
{
    Path staging = InFolder(folder, OnDisk::FragUnpacking);
    if (IsEmptyFolder(staging))
        return staging;
    // A link there is unlinked, never followed.
    if (auto status = ClearPlace(staging); !status)
        return status.Error();
    NotePlace(folder);
    if (auto status = MakeFolder(staging); !status)
        return status.Error();
    return staging;
}

/// Keeps the window alive without listening to Stop.
Heartbeat ToTheEnd(ProgressScope* progress)
{
    return [progress] { return progress == nullptr || (progress->Step(), true); };
}

struct Staging {
    Path folder;
    bool isFilled = false; ///< with all that the package holds: no tool is needed
};

/// A small zip whose directory tells all that a tool's list would needs no tool.
Result<Staging> StagingFor(const PackagePlan& plan, const Path& package, const Path& folder,
                           const UnzipOptions& options)
{
    auto staging = EmptyStaging(folder);
    if (!staging)
        return staging.Error();
    if (!plan.listed || options.guard == nullptr || FileSize(package) > mostOfSmallZip)
        return Staging{*staging};
    if (UnpackSmallZip(package, *staging))
        return Staging{*staging, true};
    staging = EmptyStaging(folder);
    return staging ? Result<Staging>{Staging{*staging}} : staging.Error();
}

void DropStaging(const Path& staging, ProgressScope* progress)
{
    (void)ClearPlace(staging, ToTheEnd(progress)); // the next package clears what stays
}

/// Holds what came out against what the package says of its files. False, with the words in the
/// state, when some of it is wrong, unless what is whole is wanted and there is some.
bool Prove(const PackagePlan& plan, const Path& package, const Path& staging,
           const UnzipOptions& options, bool toolIsContent, ToolProgressState& state)
{
    const auto proof = ProveUnpacked(
        staging, plan.files, [&] { return state.progress == nullptr || state.progress->Step(); });
    if (!proof) {
        state.error = proof.Error().code == ErrorCode::Stopped
                          ? GetMsg(Msg::BreakUser)
                          : GetMsg(Msg::PackageDamaged, {TextOf(package.filename())});
        state.details = proof.Error().reason;
        return false;
    }
    if (toolIsContent && proof->lacking.empty())
        return true;
    const bool tellsAll = std::all_of(plan.files.begin(), plan.files.end(),
                                      [](const PackedFile& file) { return file.checksum; });
    if (options.keepWhole && tellsAll && proof->whole > 0 && options.report != nullptr) {
        for (const Path& wrong : proof->wrong)
            (void)platform::Unlink(wrong); // one that stays shows when it is used
        options.report->lost = proof->lacking;
        state.error.clear();
        return true;
    }
    if (toolIsContent) {
        state.error = GetMsg(plan.locked ? Msg::PackageLocked : Msg::PackageDamaged,
                             {TextOf(package.filename())});
        state.details = ShownNames(proof->lacking);
    }
    return false;
}

/// Runs the tool into a staging folder and moves in what came, `always` or when the tool did its
/// work.
bool UnpackInto(Session& session, const PackagePlan& plan, const Path& package, const Path& folder,
                ToolRun run, const UnzipOptions& options, const std::vector<PackageEntry>& entries,
                bool always, ToolProgressState& state)
{
    if (plan.locked && !options.keepWhole) {
        state.error = GetMsg(Msg::PackageLocked, {TextOf(package.filename())});
        return false;
    }
    const auto failed = [&](const Failure& failure) {
        state.error = GetMsg(Msg::UnpackNotMoved, {TextOf(package.filename())});
        state.details = failure.subject + ": " + failure.reason;
        return false;
    };
    const auto place = StagingFor(plan, package, folder, options);
    if (!place)
        return failed(place.Error());
    const Path& staging = place->folder;
    std::string stopped;
    if (options.guard != nullptr)
        run.watch = [&] { return stopped = options.guard->Watch(); };
    const bool flatten = options.junkPaths && (always || CollideWhenFlat(entries));
    run.arguments = RowOf(plan.tool).unpack(
        {package, staging, options.junkPaths && !flatten, plan.page, plan.skip});
    bool unpacked = place->isFilled || RunTool(session, run, state);
    const bool toolIsContent = unpacked;
    const bool endedBadly = !unpacked && stopped.empty() && state.end.signal == 0 &&
                            state.end.code != 0 && state.error != GetMsg(Msg::BreakUser);
    if (!unpacked && stopped.empty())
        JudgePackage(RowOf(plan.tool), package, state);
    const bool noRoom = state.error == GetMsg(Msg::PackageNoRoom, {TextOf(package.filename())});
    if ((unpacked && plan.needsProof) || (endedBadly && options.keepWhole && !noRoom))
        unpacked = Prove(plan, package, staging, options, toolIsContent, state);
    // What came within the last moments was not looked at yet.
    if (unpacked && options.guard != nullptr)
        state.error = stopped = options.guard->Look();
    if (!stopped.empty() || !(unpacked || always)) {
        DropStaging(staging, state.progress);
        return false;
    }
    if (options.report != nullptr) {
        options.report->namesAs = plan.namesAs;
        options.report->notFiles = NotFilesBelow(staging);
        options.report->twice = NamesTwice(entries);
    }
    if (!MakePlain(staging, [&] { return state.progress == nullptr || state.progress->Step(); })) {
        state.error = GetMsg(Msg::BreakUser);
        DropStaging(staging, state.progress);
        return false;
    }
    const auto placed = PlaceUnpacked(staging, folder, options.junkPaths, entries, state.progress);
    if (!placed) {
        DropStaging(staging, state.progress);
        return failed(placed.Error());
    }
    if (options.report != nullptr)
        options.report->renamed = *placed;
    if (!options.keepStaging || !IsEmptyFolder(staging))
        DropStaging(staging, state.progress);
    return unpacked;
}

} // namespace

bool IsReadyToUnpack(const Path& folder)
{
    std::vector<platform::FolderEntry> entries;
    if (platform::FactsOfLink(folder).kind != platform::FileKind::Folder ||
        platform::ListFolder(folder, entries))
        return false;
    const Path staging = InFolder(folder, OnDisk::FragUnpacking);
    return entries.empty() || (entries.size() == 1 && entries.front().name == staging.filename() &&
                               IsEmptyFolder(staging));
}

bool ZipFolder(Session& session, const Path& zip, const Path& folder, ToolProgressState& state)
{
    const ToolRow& row = RowOf(ToolId::Zip);
    if (FindTool(session, row).empty()) {
        const std::string place = TextOf(session.programFolder);
        session.host.Tell(Tone::Error, GetMsg(Msg::ZipProgramMissing) + place,
                          GetMsg(Msg::ToolInstallHint, {row.name, place, row.package}));
        return false;
    }
    const Path target = platform::AbsolutePath(ResolvePath(zip));
    const Path source = platform::AbsolutePath(ResolvePath(folder));
    if (const auto status = DeleteFile(target); !status) {
        state.error = GetMsg(Msg::ErrorRemovingFile) + TextOf(target);
        state.details = status.Error().reason;
        return false;
    }
    const auto listed = ListFiles(source, OnDisk::PatAllFiles);
    if (!listed) {
        state.error = GetMsg(Msg::FolderNotRead, {listed.Error().subject});
        state.details = listed.Error().reason;
        return false;
    }
    const std::vector<Path>& files = *listed;
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
    const Path source = platform::AbsolutePath(ResolvePath(package));
    PackagePlan plan = PlanFor(session, source, {});
    return List(session, plan, source, {}, entries, state);
}

bool UnzipWithProgress(Session& session, const Path& package, const Path& folder,
                       const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = platform::AbsolutePath(ResolvePath(package));
    const Path target = platform::AbsolutePath(ResolvePath(folder));
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
    platform::File readable;
    if (const auto failure = platform::File::OpenForRead(source, readable)) {
        state.error = GetMsg(Msg::PackageNotRead, {TextOf(source.filename())});
        state.details = failure.message();
        return false;
    }
    PackagePlan plan = PlanFor(session, source, options.namesAs);
    if (plan.locked && !options.keepWhole) {
        state.error = GetMsg(Msg::PackageLocked, {TextOf(source.filename())});
        return false;
    }
    std::vector<PackageEntry> entries;
    if (plan.listed && options.guard != nullptr)
        entries = plan.entries;
    else if (!List(session, plan, source, options.namesAs, entries, state))
        return false;
    // A list can be made to say less than what comes out; so can the directory, in another way.
    if (options.guard != nullptr) {
        state.error = options.guard->Refuses(entries);
        if (state.error.empty())
            state.error = options.guard->Refuses(plan.entries);
        if (!state.error.empty())
            return false;
    }
    // The names in the directory are exact, those of the list are made harmless.
    if (plan.entries.size() == entries.size())
        entries = std::move(plan.entries);

    std::vector<std::string> ledOut = LeaveOutWhatLeadsOut(plan, entries);
    if (options.report != nullptr)
        options.report->ledOut = std::move(ledOut);
    ToolRun run{plan.tool};
    run.handler = Msg::HandlerUnzip;
    // Entries of size 0 are folders.
    run.total = static_cast<std::uint64_t>(std::count_if(
        entries.begin(), entries.end(), [](const PackageEntry& entry) { return entry.size != 0; }));
    const bool unpacked =
        UnpackInto(session, plan, source, target, run, options, entries, false, state);
    if (unpacked)
        ClearToolProgress(state);
    return unpacked;
}

bool UnzipQuick(Session& session, const Path& package, const Path& folder,
                const UnzipOptions& options, ToolProgressState& state)
{
    const Path source = platform::AbsolutePath(ResolvePath(package));
    const Path target = platform::AbsolutePath(ResolvePath(folder));
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
    const PackagePlan plan = PlanFor(session, source, options.namesAs);
    // The caller looks for the files.
    (void)UnpackInto(session, plan, source, target, ToolRun{plan.tool}, options, {}, true, state);
    return true;
}

} // namespace kestrova
