#include "practice/practice_folder.h"

#include "core/files.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "practice/content.h"
#include "practice/make_content.h"
#include "practice/music.h"
#include "practice/package_content.h"
#include "practice/practice_packages.h"
#include "practice/put_program.h"
#include "practice/sounds.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/removal.h"
#include "platform/process.h"
#include "practice/file_names.h"
#include "words/practice.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>

namespace kestrova
{

namespace
{

/// The number of the first tune of a Level Editor.
constexpr unsigned firstTune = 58;

/// One file to be made, and how; the parts are independent, so that all cores make them.
struct Job {
    Path file;
    std::function<std::string()> make;
};

void PlanLevel(const PracticeLevel& level, const Path& folder, double scale, std::vector<Job>& jobs)
{
    std::uint64_t seed = FirstSeedOf(level);
    const std::string title = ToWindows1252(Told(level.name));
    for (const PracticeItem& item : level.items)
        jobs.push_back(
            {InFolder(folder, item.file), [=, &item, style = level.style, number = seed++] {
                 return MakeContent(item, title, style, number, scale);
             }});
}

/// The music, 0.4 to 2.5 seconds each, numbered as in a real folder and in mixed case.
void PlanMusic(const Path& trle, std::vector<Job>& jobs)
{
    for (unsigned i = 0; i < practiceTunes; ++i) {
        const std::string_view name =
            i % 3 == 0 ? OnDisk::FragPracticeWaveUpper : OnDisk::FragPracticeWaveLower;
        jobs.push_back({InFolder(trle, Filled(name, {ZeroPadded(firstTune + i, 3)})),
                        [i] { return TuneWave(90000 + i, 0.4 + 0.3 * (i % 8)); }});
    }
}

/// The music of the Level Editor's setup, which is silent.
void PlanSetupMusic(const Path& trle, std::vector<Job>& jobs)
{
    constexpr unsigned frames = 12;
    for (unsigned i = 0; i < practiceTunes; ++i)
        jobs.push_back(
            {InFolder(trle, Filled(OnDisk::FragSetupTune, {ZeroPadded(firstTune + i, 3)})),
             [] { return SilentMp3(frames); }});
}

void PlanPackages(const Path& packages, std::vector<Job>& jobs)
{
    for (const PracticeLevel& package : PracticePackages())
        PlanLevel(package, packages / Told(package.name), 1, jobs);
    const PracticeLevel& editor = PracticeEditorSetup();
    const Path trle = packages / Told(editor.name) / OnDisk::SetupSubfolder;
    PlanLevel(editor, trle, 1, jobs);
    PlanSetupMusic(trle, jobs);
}

/// Makes all files on all cores; the first failure stops the others.
Status MakeFiles(const std::vector<Job>& jobs, const PracticeProgress& progress)
{
    for (const Job& job : jobs)
        if (Status made = MakeFolders(job.file.parent_path()); !made)
            return made;
    std::mutex mutex;
    std::optional<Failure> failure;
    std::size_t latest = 0;
    std::atomic<int> done{0};
    const bool all = RunOnAllCores(
        jobs.size(),
        [&](std::size_t i) {
            Status written = WriteWholeFile(jobs[i].file, jobs[i].make(), false);
            const std::lock_guard lock{mutex};
            if (!written && !failure)
                failure = written.Error();
            latest = i;
            ++done;
        },
        [&] {
            std::unique_lock lock{mutex};
            const Path name = jobs[latest].file.filename();
            const bool failed = failure.has_value();
            lock.unlock();
            const int total = static_cast<int>(jobs.size());
            return !failed && (!progress || progress(done, total, TextOf(name)));
        });
    if (failure)
        return *failure;
    return all ? Status{} : Status{MakeFailure(ErrorCode::Stopped, {})};
}

/// Packs a level's folder beside it. The tool makes its file aside and renames it when it is whole.
bool PackFolder(const Path& folder, const std::function<void()>& heartbeat)
{
    const Path zip = folder.native() + std::string{OnDisk::EndingZip};
    platform::Launch launch;
    launch.argv = {std::string{OnDisk::PracticeZipTool}, "-qr", ".." / zip.filename(),
                   std::string{OnDisk::PracticeHere}};
    launch.folder = folder;
    std::int64_t pid = 0;
    if (platform::StartDetached(launch, pid))
        return false;
    while (platform::IsRunning(pid)) {
        heartbeat();
        std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    return FileExists(zip);
}

Failure WithWords(ErrorCode code, Message row, const Path& subject)
{
    return {code, TextOf(subject), GetMsg(row, {TextOf(subject)})};
}

/// What is to be packed beside itself.
std::vector<Path> FoldersToPack(const Path& aside, const PracticeMade& made)
{
    std::vector<Path> folders;
    const auto add = [&](const Path& folder, std::span<const PracticeLevel> all) {
        for (const PracticeLevel& level : all)
            if (level.alsoZip)
                folders.push_back(aside / folder.filename() / Told(level.name));
    };
    add(made.levels, PracticeLevels());
    add(made.packages, PracticePackages());
    add(made.packages, {&PracticeEditorSetup(), 1});
    return folders;
}

Status PackAll(PracticeMade& made, const Path& aside, const PracticeProgress& progress, int total)
{
    if (platform::FindOnPath(std::string{OnDisk::PracticeZipTool}).empty()) {
        made.remark = GetMsg(Msg::PracticeNoZip);
        return {};
    }
    for (const Path& folder : FoldersToPack(aside, made)) {
        const std::string name = TextOf(folder.filename());
        bool goOn = true; // a stop waits for the pack, which takes less than a second
        const auto heartbeat = [&] {
            goOn =
                goOn && (!progress || progress(total, total, GetMsg(Msg::PracticePacking, {name})));
        };
        if (!PackFolder(folder, heartbeat))
            made.remark = GetMsg(Msg::PracticeZipFailed, {name});
        else if (folder.parent_path().filename() == made.levels.filename())
            made.zips.push_back(made.levels / (name + std::string{OnDisk::EndingZip}));
        if (!goOn)
            return MakeFailure(ErrorCode::Stopped, {});
    }
    return {};
}

/// Three files that are blank discs, and the empty folder in which the drive shows the disc in it.
Status MakeBlankDiscs(const Path& discs)
{
    constexpr int blanks = 3;
    if (Status made = MakeFolders(InFolder(discs, OnDisk::FragPracticeSeen)); !made)
        return made;
    for (int i = 1; i <= blanks; ++i)
        if (Status made = WriteWholeFile(
                InFolder(discs, Filled(OnDisk::FragPracticeBlank, {std::to_string(i)})), {}, false);
            !made)
            return made;
    return {};
}

Status MakeAll(const Path& aside, const PracticePrograms& programs,
               const PracticeProgress& progress, const PracticeOptions& options, PracticeMade& made)
{
    const Path trle = aside / made.trle.filename();
    const Path levels = aside / made.levels.filename();
    std::vector<Job> jobs;
    for (const PracticeLevel& level : PracticeLevels()) { // the big one first, it takes longest
        const bool big = level.name == Msg::PracticeLevelBig;
        const double scale =
            big ? static_cast<double>(options.bigLevelBytes) / (bigLevelSize * 1000.0) : 1;
        PlanLevel(level, levels / Told(level.name), scale, jobs);
    }
    PlanLevel(PracticeOriginal(), trle, 1, jobs);
    PlanMusic(trle, jobs);
    const Path packages = aside / made.packages.filename();
    PlanPackages(packages, jobs);
    if (Status files = MakeFiles(jobs, progress); !files)
        return files;

    for (const auto& [program, place] :
         {std::pair{programs.game, OnDisk::FragPracticeGame},
          std::pair{programs.compiler, OnDisk::FragPracticeCompiler},
          std::pair{programs.scriptCompiler, OnDisk::FragPracticeScriptExe}})
        if (Status put = PutProgram(program, InFolder(trle, place)); !put)
            return put;
    if (Status finished = FinishPackages(packages, programs); !finished)
        return finished;
    if (Status discs = MakeBlankDiscs(aside / made.discs.filename()); !discs)
        return discs;
    return PackAll(made, aside, progress, static_cast<int>(jobs.size()));
}

} // namespace

std::optional<DriveSetting> PracticeDrive(const Path& trle)
{
    // The largest level takes 96 of them; a plan leaves some room, and the next level does not fit.
    constexpr std::uint64_t discMegabytes = 105;
    const Path dir = trle.parent_path();
    const Path discs = InFolder(dir, OnDisk::FragPracticeDiscs);
    const Path seen = InFolder(discs, OnDisk::FragPracticeSeen);
    if (trle != InFolder(dir, OnDisk::FragPracticeTrle) || !FolderExists(seen))
        return std::nullopt;
    return DriveSetting{
        std::string{OnDisk::PracticeDriveName},
        InFolder(discs, Filled(OnDisk::FragPracticeBlank, {std::to_string(1)})).native(),
        seen.native(), discMegabytes, true};
}

PracticePrograms StandInsIn(const Path& folder)
{
    // A build has them beside its programs; installed, they are in nobody's search path.
    const Path installed = folder.parent_path() / OnDisk::DirInstalledStandIns;
    const Path& in = FileExists(installed / OnDisk::StandInCompiler) ? installed : folder;
    return {in / OnDisk::StandInGame, in / OnDisk::StandInCompiler,
            in / OnDisk::StandInScriptCompiler, in / OnDisk::StandInSetup};
}

PracticePlaces PlacesIn(const Path& dir)
{
    return {InFolder(dir, OnDisk::FragPracticeTrle), InFolder(dir, OnDisk::FragPracticeLevels),
            InFolder(dir, OnDisk::FragPracticePackages), InFolder(dir, OnDisk::FragPracticeDiscs)};
}

Result<PracticeMade> MakePracticeFolder(const Path& dir, const PracticePrograms& programs,
                                        const PracticeProgress& progress,
                                        const PracticeOptions& options)
{
    PracticeMade made{PlacesIn(dir), {}, {}};
    for (const Path& taken : {made.trle, made.levels, made.packages, made.discs}) {
        const auto isFree = IsFree(taken);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            return WithWords(ErrorCode::Refused, Msg::PracticeExists, taken);
    }
    for (const Path& program :
         {programs.game, programs.compiler, programs.scriptCompiler, programs.setup})
        if (!FileExists(program))
            return WithWords(ErrorCode::Missing, Msg::PracticeNoProgram, program);
    if (Status folder = MakeFolders(dir); !folder)
        return folder.Error();

    const Path aside = StagedNameFor(made.trle);
    Status status = MakeAll(aside, programs, progress, options, made);
    std::vector<Path> moved; // what else stands there is not ours
    for (const Path& target : {made.levels, made.packages, made.discs, made.trle}) {
        if (!status)
            break;
        if (const auto failure = platform::Rename(aside / target.filename(), target))
            status = MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
        else
            moved.push_back(target);
    }
    if (!status)
        for (const Path& folder : moved)
            (void)RemoveTree(folder);
    (void)RemoveTree(aside); // listings skip what cannot be removed
    if (!status)
        return status.Error();
    return made;
}

} // namespace kestrova
