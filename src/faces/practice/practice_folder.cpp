#include "practice/practice_folder.h"

#include "core/files.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/staged_file.h"
#include "core/text.h"
#include "pictures/bitmap.h"
#include "pictures/jpeg.h"
#include "practice/content.h"
#include "practice/game_data.h"
#include "practice/music.h"
#include "practice/practice_script.h"
#include "practice/scene.h"

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

/// One file to be made, and how; the parts are independent, so that all cores make them.
struct Job {
    Path file;
    std::function<std::string()> make;
};

std::string TextFile(Message row)
{
    return ToWindows1252(ReplaceAll(std::string{row.text}, "~1", lineBreak));
}

std::string MakeContent(const PracticeItem& item, const std::string& title, int style,
                        std::uint64_t seed, double scale)
{
    const int otherView = (style + 2) % sceneStyles;
    switch (item.content) {
    case Content::GameData:
        return MakeGameData(seed, static_cast<std::size_t>(item.size * 1000.0 * scale));
    case Content::Tune:
        return TuneWave(seed, item.size * 0.1 * scale);
    case Content::Script:
        return PracticeScript(title);
    case Content::ScriptOf:
        return CompiledPracticeScript(TextFile(item.text));
    case Content::LoadPicture:
        return EncodeBitmap(PaintScene(title, style));
    case Content::Text:
        return TextFile(item.text);
    case Content::Language:
        return CompiledPracticeLanguage(TextFile(item.text));
    case Content::Jpeg: {
        // The painted view always has a size that a jpeg can have.
        return EncodeJpeg(PaintScene({}, style)).Value();
    }
    case Content::Bitmap:
        return EncodeBitmap(PaintScene({}, otherView, 320, 240));
    }
    return {};
}

void PlanLevel(const PracticeLevel& level, const Path& folder, double scale, std::vector<Job>& jobs)
{
    std::uint64_t seed = static_cast<std::uint64_t>(level.style) * 1000;
    const std::string title = ToWindows1252(GetMsg(level.name));
    for (const PracticeItem& item : level.items)
        jobs.push_back(
            {InFolder(folder, item.file), [=, &item, style = level.style, number = ++seed] {
                 return MakeContent(item, title, style, number, scale);
             }});
}

/// The music, 0.4 to 2.5 seconds each, numbered as in a real folder and in mixed case.
void PlanMusic(const Path& trle, std::vector<Job>& jobs)
{
    constexpr unsigned firstNumber = 58;
    for (unsigned i = 0; i < practiceTunes; ++i) {
        const std::string_view name =
            i % 3 == 0 ? OnDisk::FragPracticeWaveUpper : OnDisk::FragPracticeWaveLower;
        jobs.push_back({InFolder(trle, Filled(name, {ZeroPadded(firstNumber + i, 3)})),
                        [i] { return TuneWave(90000 + i, 0.4 + 0.3 * (i % 8)); }});
    }
}

Status WriteNew(const Path& file, const std::string& bytes)
{
    StagedFile staged{file};
    if (Status opened = staged.Open(); !opened)
        return opened;
    if (Status written = staged.Write(bytes); !written)
        return written;
    return staged.Commit(false);
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
            Status written = WriteNew(jobs[i].file, jobs[i].make());
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

Status PackLevels(PracticeMade& made, const Path& levels, const PracticeProgress& progress,
                  int total)
{
    if (platform::FindOnPath(std::string{OnDisk::PracticeZipTool}).empty()) {
        made.remark = GetMsg(Msg::PracticeNoZip);
        return {};
    }
    for (const PracticeLevel& level : PracticeLevels()) {
        if (!level.alsoZip)
            continue;
        const std::string name = GetMsg(level.name);
        bool goOn = true; // a stop waits for the pack, which takes less than a second
        const auto heartbeat = [&] {
            goOn =
                goOn && (!progress || progress(total, total, GetMsg(Msg::PracticePacking, {name})));
        };
        if (PackFolder(levels / name, heartbeat))
            made.zips.push_back(made.levels / (name + std::string{OnDisk::EndingZip}));
        else
            made.remark = GetMsg(Msg::PracticeZipFailed, {name});
        if (!goOn)
            return MakeFailure(ErrorCode::Stopped, {});
    }
    return {};
}

Status PutProgram(const Path& program, const Path& place)
{
    if (Status copied = CopyFileOver(program, place); !copied)
        return copied;
    if (const auto failure = platform::SetMode(place, 0755))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(place), failure);
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
        PlanLevel(level, levels / GetMsg(level.name), scale, jobs);
    }
    PlanLevel(PracticeOriginal(), trle, 1, jobs);
    PlanMusic(trle, jobs);
    if (Status files = MakeFiles(jobs, progress); !files)
        return files;

    for (const auto& [program, place] :
         {std::pair{programs.game, OnDisk::FragPracticeGame},
          std::pair{programs.compiler, OnDisk::FragPracticeCompiler},
          std::pair{programs.scriptCompiler, OnDisk::FragPracticeScriptExe}})
        if (Status put = PutProgram(program, InFolder(trle, place)); !put)
            return put;
    return PackLevels(made, levels, progress, static_cast<int>(jobs.size()));
}

} // namespace

PracticePrograms StandInsIn(const Path& folder)
{
    return {folder / OnDisk::StandInGame, folder / OnDisk::StandInCompiler,
            folder / OnDisk::StandInScriptCompiler};
}

Result<PracticeMade> MakePracticeFolder(const Path& dir, const PracticePrograms& programs,
                                        const PracticeProgress& progress,
                                        const PracticeOptions& options)
{
    PracticeMade made;
    made.trle = InFolder(dir, std::string{OnDisk::FragPracticeTrle});
    made.levels = InFolder(dir, std::string{OnDisk::FragPracticeLevels});
    for (const Path& taken : {made.trle, made.levels}) {
        const auto isFree = IsFree(taken);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            return WithWords(ErrorCode::Refused, Msg::PracticeExists, taken);
    }
    for (const Path& program : {programs.game, programs.compiler, programs.scriptCompiler})
        if (!FileExists(program))
            return WithWords(ErrorCode::Missing, Msg::PracticeNoProgram, program);
    if (Status folder = MakeFolders(dir); !folder)
        return folder.Error();

    const Path aside = StagedNameFor(made.trle);
    Status status = MakeAll(aside, programs, progress, options, made);
    bool levelsMoved = false; // what else stands there is not ours
    for (const Path& target : {made.levels, made.trle}) {
        if (!status)
            break;
        const auto failure = platform::Rename(aside / target.filename(), target);
        if (failure)
            status = MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
        if (failure && levelsMoved)
            (void)RemoveTree(made.levels);
        levelsMoved = true;
    }
    (void)RemoveTree(aside); // listings skip what cannot be removed
    if (!status)
        return status.Error();
    return made;
}

} // namespace kestrova
