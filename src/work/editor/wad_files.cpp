#include "editor/wad_files.h"

#include "core/activity_log.h"
#include "core/look.h"
#include "core/name_set.h"
#include "editor/compile_one_tom.h"
#include "editor/file_names.h"
#include "editor/told_rest.h"
#include "formats/trle_folder.h"
#include "originals/folder_loan.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/core.h"
#include "words/editor.h"
#include "words/wads.h"

namespace kestrova
{

namespace
{

constexpr ImportTree bothTrees[] = {ImportTree::Backup, ImportTree::LevelEditor};

std::string FolderOfData()
{
    return std::string{OnDisk::DirData} + '\\';
}

Path FinishedOf(const WadWork& work, const Path& tom)
{
    return ResolvePath(work.package / (BaseNameOf(tom.native()) + std::string{OnDisk::Tr4Ending}));
}

std::string PlaceOfLevel(const Path& tom)
{
    return FolderOfData() + BaseNameOf(tom.native()) + std::string{OnDisk::Tr4Ending};
}

Status PutInTree(const WadWork& work, ImportTree tree, const Path& source,
                 const std::string& subfolder)
{
    const std::string name = source.filename().native();
    const auto relative = SafeRelative(subfolder + name);
    Status done = relative ? Status{} : Status{relative.Error()};
    if (done && !work.files.MayChange(tree, subfolder + name))
        done = MakeFailure(ErrorCode::Refused, name);
    if (done)
        done = CopyWadFile(work, source, RootOf(work.parts.folders, tree) / *relative);
    const Message root = tree == ImportTree::Backup ? Msg::ImportLineBackup : Msg::ImportLineTrle;
    ReportOutcome(work, {Readable(name), Told(Msg::LogArrow), Told(root), subfolder},
                  static_cast<bool>(done));
    return !done && done.Error().code == ErrorCode::Stopped ? done : Status{};
}

Status AddPlaces(std::vector<ImportPlace>& places, const Path& file, const std::string& subfolder)
{
    const auto hash = HashIfThere(file);
    if (!hash)
        return hash.Error();
    for (const ImportTree tree : bothTrees)
        places.push_back({tree, subfolder + file.filename().native(), {}, *hash});
    return {};
}

/// What does not go in. A failure stops the import.
Status LeaveOut(const WadWork& work, const WadRoute& route)
{
    const std::string name = Readable(route.file.filename().native());
    if (route.goal == WadGoal::Ignored)
        work.report += LogLine({name, Told(Msg::ImportLineIgnored)});
    if (route.goal != WadGoal::Misplaced)
        return {};
    work.parts.host.Tell(Tone::Warning,
                         GetMsg(Msg::WaveWithoutNumber, {name, lineBreak, lineBreak}));
    if (const auto gone = DeleteFile(route.file); !gone)
        TellFailure(work.parts.host, gone.Error());
    return {};
}

Status Route(const WadWork& work, const WadRoute& route)
{
    if (route.goal == WadGoal::Install)
        return InstallFile(work, route.file, route.subfolder);
    if (route.goal != WadGoal::Scripts)
        return LeaveOut(work, route);
    const auto copied = CopyWadFile(work, route.file, work.newScripts / route.file.filename());
    ReportOutcome(work, {Readable(route.file.filename().native()), Told(Msg::ImportLineAnalyse)},
                  static_cast<bool>(copied));
    return !copied && copied.Error().code == ErrorCode::Stopped ? copied : Status{};
}

/// In both trees. A copy into one that cannot be made reports it.
void MakeFolderFor(const WadWork& work, const std::string& subfolder, NameSet& made)
{
    if (subfolder == "\\" || made.Has(subfolder))
        return;
    made.Add(subfolder);
    for (const ImportTree tree : bothTrees)
        (void)work.files.MakeFolderOf(tree, subfolder.substr(0, subfolder.size() - 1));
}

/// One level; `failed` gets its name when it did not come out.
Status CompileTom(const WadWork& work, const Path& tom, std::vector<std::string>& failed)
{
    const std::string name = Readable(tom.native());
    const Path finished = FinishedOf(work, tom);
    const auto isFinished = IsFile(finished);
    if (!isFinished)
        return isFinished.Error();
    if (*isFinished)
        return InstallFile(work, finished, FolderOfData());
    const Folders& folders = work.parts.folders;
    const std::string place = PlaceOfLevel(tom);
    const Path result = folders.trle / SafeRelative(place).Value();
    ToolReport report;
    const CompileParts& parts = work.parts;
    // A program that lies elsewhere is remembered by its whole path, which the folder gives way to.
    const TomRun run{folders.trle / Path{Trim(parts.preferences.tom2PcName)}, folders.trle,
                     ResolvePath(InFolder(folders.trle, OnDisk::DirWads) / tom), result,
                     parts.bounds};
    const auto compiled =
        work.files.MayChange(ImportTree::LevelEditor, place)
            ? CompileOneTom(parts.tools, parts.machine, run, parts.progress, report)
            : Status{MakeFailure(ErrorCode::Refused, place)};
    if (!compiled && compiled.Error().code == ErrorCode::Stopped)
        return compiled;
    if (!compiled) {
        work.report += LogLine({name, Told(Msg::ImportLineNotCompiled)});
        failed.push_back(BaseNameOf(tom.native()) + std::string{OnDisk::Tr4Ending});
        return work.files.PutBack(ImportTree::LevelEditor, place);
    }
    work.report += LogLine({name, Told(Msg::ImportLineCompiled)});
    const auto copied =
        work.files.MayChange(ImportTree::Backup, place)
            ? CopyWadFile(work, ResolvePath(result), folders.Backup() / SafeRelative(place).Value())
            : Status{MakeFailure(ErrorCode::Refused, place)};
    ReportOutcome(work, {name, Told(Msg::ImportLineBackupData)}, static_cast<bool>(copied));
    return !copied && copied.Error().code == ErrorCode::Stopped ? copied : Status{};
}

Status CompileEach(const WadWork& work, const std::vector<Path>& toms,
                   std::vector<std::string>& failed)
{
    ProgressScope& progress = work.parts.progress;
    for (std::size_t i = 0; i < toms.size(); ++i) {
        progress.SetBar(i, toms.size());
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, {});
        if (auto compiled = CompileTom(work, toms[i], failed); !compiled)
            return compiled;
    }
    return {};
}

} // namespace

Heartbeat BeatOf(const WadWork& work)
{
    return [&progress = work.parts.progress] { return progress.Step(); };
}

void ReportOutcome(const WadWork& work, std::initializer_list<std::string> parts, bool done)
{
    std::string line;
    for (const std::string& part : parts)
        line += part;
    work.report += LogLine({line, Told(done ? Msg::LogOk : Msg::LogError)});
}

Status CopyWadFile(const WadWork& work, const Path& source, const Path& target,
                   std::uint32_t rights)
{
    CopyOptions options;
    options.rights = rights;
    options.progress = [&](std::uint64_t) { return work.parts.progress.Step(); };
    return CopyFileOver(source, target, options);
}

Status InstallFile(const WadWork& work, const Path& source, const std::string& subfolder)
{
    for (const ImportTree tree : bothTrees)
        if (auto put = PutInTree(work, tree, source, subfolder); !put)
            return put;
    return {};
}

Result<std::vector<Path>> TomsToCompile(const Folders& folders, const WadRoutes& routes)
{
    std::vector<Path> toms = routes.toms;
    for (const Path& wad : routes.wads) {
        const Path tom = ResolvePath(InFolder(folders.trle, OnDisk::DirWads) /
                                     (BaseNameOf(wad.native()) + std::string{OnDisk::TomEnding}));
        const auto isThere = IsFile(tom);
        if (!isThere)
            return isThere.Error();
        if (*isThere)
            toms.push_back(tom.filename());
    }
    return toms;
}

Status WatchFiles(const WadWork& work, const WadRoutes& routes, const std::vector<Path>& toms)
{
    std::vector<ImportPlace> places;
    work.parts.progress.SetLabel(GetMsg(Msg::ImportKeeping));
    for (const WadRoute& route : routes.files) {
        if (!work.parts.progress.Step())
            return MakeFailure(ErrorCode::Stopped, {});
        if (route.goal == WadGoal::Install)
            if (auto added = AddPlaces(places, route.file, route.subfolder); !added)
                return added;
    }
    for (const Path& tom : toms) {
        const Path finished = FinishedOf(work, tom);
        const auto isFinished = IsFile(finished);
        if (!isFinished)
            return isFinished.Error();
        if (*isFinished) {
            if (auto added = AddPlaces(places, finished, FolderOfData()); !added)
                return added;
            continue;
        }
        for (const ImportTree tree : bothTrees)
            places.push_back({tree, PlaceOfLevel(tom)});
    }
    return work.files.Watch(places, {}, BeatOf(work));
}

Status InstallFiles(const WadWork& work, const WadRoutes& routes)
{
    ProgressScope& progress = work.parts.progress;
    progress.SetLabel(GetMsg(Msg::ImportCopying));
    NameSet made;
    for (std::size_t i = 0; i < routes.files.size(); ++i) {
        const WadRoute& route = routes.files[i];
        progress.SetBar(i, routes.files.size());
        if (!progress.Step())
            return MakeFailure(ErrorCode::Stopped, {});
        if (route.goal == WadGoal::Install)
            MakeFolderFor(work, route.subfolder, made);
        if (auto routed = Route(work, route); !routed)
            return routed;
    }
    ClearProgress(progress);
    return {};
}

Status CompileToms(const WadWork& work, const std::vector<Path>& toms,
                   std::vector<std::string>& failed)
{
    if (toms.empty())
        return {};
    work.parts.progress.SetLabel(GetMsg(Msg::ImportCompilingToms));
    std::vector<std::string> results;
    for (const Path& tom : toms)
        results.push_back(PlaceOfLevel(tom));
    // What else stands in the folder is no compiler's business.
    FolderLoan loan{work.parts.machine, work.parts.folders};
    auto compiled = loan.Begin({});
    if (compiled)
        compiled = loan.KeepRest(work.parts.progress, results);
    if (!compiled)
        return compiled;
    compiled = CompileEach(work, toms, failed);
    const auto rest = loan.ReturnRest();
    if (!rest)
        return compiled ? StatusOf(rest) : compiled; // the rest is tried again with the folder
    TellRest(work.parts.host, *rest);
    const auto ended = loan.Keep();
    ClearProgress(work.parts.progress);
    return compiled ? ended : compiled;
}

} // namespace kestrova
