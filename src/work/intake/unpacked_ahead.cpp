#include "intake/unpacked_ahead.h"

#include "core/leftovers.h"
#include "core/look.h"
#include "core/ordered_jobs.h"
#include "core/removal.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace kestrova
{

namespace
{

bool SameState(const platform::FileFacts& a, const platform::FileFacts& b)
{
    return IsSameThing(a, b) && a.size == b.size && a.modifiedNs == b.modifiedNs;
}

} // namespace

/// One package on its way. The worker alone writes what it brings, until `IsDone`.
class UnpackedAhead::Job
{
public:
    Job(Machine& machine, const Folders& folders, Tools tools, Path package, SourceOptions options)
        : machine_(machine), tools_(std::move(tools)), package_(std::move(package)),
          options_(std::move(options)), before_(LookAt(package_))
    {
        NotePlace(folders.program);
        brought_.place =
            std::make_shared<WorkFolder>(FreshPlaceIn(folders.program), WorkFolder::Make::Now);
        thread_ = std::jthread{[this] {
            status_ = Unpack();
            done_ = true;
        }};
    }
    ~Job() { Stop(); }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    [[nodiscard]] const Path& Package() const { return package_; }
    [[nodiscard]] bool IsDone() const { return done_; }
    void Stop() { progress_.stopped = true; }
    /// What came, when all is well with it and the package is as it was.
    std::optional<Unpacked> Brought()
    {
        const auto now = LookAt(package_);
        if (!status_ || !before_ || !now || !SameState(*before_, *now))
            return {};
        return std::move(brought_);
    }

private:
    /// Shows nothing; its Stop is pressed by the owner of the work.
    class Unseen : public ProgressScope
    {
    public:
        void SetLabel(const std::string&) override {}
        void SetBar(std::uint64_t, std::uint64_t) override {}
        void AllowStop() override {}
        bool Step() override { return !stopped; }

        std::atomic<bool> stopped = false;
    };

    Status Unpack();

    Machine& machine_;
    Tools tools_;
    Path package_;
    SourceOptions options_;
    Result<platform::FileFacts> before_;
    Unpacked brought_;
    Unseen progress_;
    Status status_;
    std::atomic<bool> done_ = false;
    std::jthread thread_; ///< last, so that it is joined first
};

Status UnpackedAhead::Job::Unpack()
{
    UnpackGuard guard{machine_, package_, brought_.place->Folder(), options_.limits};
    UnzipOptions options;
    options.guard = &guard;
    options.namesAs = options_.namesAs;
    options.report = &brought_.report;
    options.keepWhole = options_.keepWhole;
    ToolProgressState state{&progress_};
    state.quiet = true;
    auto status = UnzipWithProgress(tools_, package_, brought_.place->Folder(), options, state);
    brought_.came = guard.Came();
    return status;
}

UnpackedAhead::UnpackedAhead(Machine& machine, Folders folders, Tools tools)
    : machine_(machine), folders_(std::move(folders)), tools_(std::move(tools))
{
}

UnpackedAhead::~UnpackedAhead()
{
    (void)DropAll();
}

bool UnpackedAhead::Begin(const Path& package, const SourceOptions& options)
{
    const auto same = [&](const auto& job) { return job->Package() == package; };
    if (std::any_of(jobs_.begin(), jobs_.end(), same))
        return true;
    if (!IsPackage(package) || !FileExists(package) || jobs_.size() >= OrderedJobs::Cores())
        return false;
    jobs_.push_back(std::make_unique<Job>(machine_, folders_, tools_, package, options));
    return true;
}

std::optional<UnpackedAhead::Unpacked> UnpackedAhead::Take(const Path& package,
                                                           ProgressScope& progress)
{
    const auto found = std::find_if(jobs_.begin(), jobs_.end(),
                                    [&](const auto& job) { return job->Package() == package; });
    if (found == jobs_.end())
        return {};
    const std::unique_ptr<Job> job = std::move(*found);
    jobs_.erase(found);
    constexpr std::chrono::milliseconds slice{5};
    while (!job->IsDone()) {
        if (!progress.Step())
            return {};
        std::this_thread::sleep_for(slice);
    }
    return job->Brought();
}

void UnpackedAhead::Drop(const Path& package)
{
    std::erase_if(jobs_, [&](const auto& job) { return job->Package() == package; });
}

bool UnpackedAhead::DropAll()
{
    for (const auto& job : jobs_)
        job->Stop(); // all of them, before the first one is waited for
    const bool any = !jobs_.empty();
    jobs_.clear();
    return any;
}

} // namespace kestrova
