#include "intake/unpacked_ahead.h"

#include "core/file_kinds.h"
#include "core/leftovers.h"
#include "core/look.h"
#include "core/ordered_jobs.h"
#include "core/removal.h"
#include "packages/package_tools.h"
#include "storage/compressed_kinds.h"
#include "storage/zl_file.h"

#include <algorithm>
#include <new>
#include <thread>
#include <utility>

namespace kestrova
{

namespace
{

/// Of all streams that wait together, and of one file: its worker does not hear of a Stop
/// meanwhile.
constexpr std::int64_t mostOfStreams = std::int64_t{256} << 20;
constexpr std::uint64_t largestDeflated = std::uint64_t{64} << 20;

bool SameState(const platform::FileFacts& a, const platform::FileFacts& b)
{
    return IsSameThing(a, b) && a.size == b.size && a.modifiedNs == b.modifiedNs;
}

} // namespace

/// One package on its way. The worker alone writes what it brings, until `IsDone`.
class UnpackedAhead::Job
{
public:
    Job(UnpackedAhead& owner, Path package, SourceOptions options)
        : owner_(owner), package_(std::move(package)), options_(std::move(options)),
          before_(LookAt(package_))
    {
        NotePlace(owner.folders_.program);
        brought_.place = std::make_shared<WorkFolder>(FreshPlaceIn(owner.folders_.program),
                                                      WorkFolder::Make::Now);
        thread_ = std::jthread{[this] {
            status_ = Unpack();
            if (status_ && owner_.deflate_ != DeflateAhead::Nothing)
                Deflate();
            done_ = true;
        }};
    }
    ~Job()
    {
        Stop();
        thread_.join();
        owner_.GiveBack(brought_.streams);
    }
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
    /// As far as room and Stop let it; what has no stream is deflated when it is stored.
    void Deflate();
    void DeflateOne(const Path& file);

    UnpackedAhead& owner_;
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
    UnpackGuard guard{owner_.machine_, package_, brought_.place->Folder(), options_.limits};
    UnzipOptions options;
    options.guard = &guard;
    options.namesAs = options_.namesAs;
    options.report = &brought_.report;
    options.keepWhole = options_.keepWhole;
    ToolProgressState state{&progress_};
    state.quiet = true;
    auto status =
        UnzipWithProgress(owner_.tools_, package_, brought_.place->Folder(), options, state);
    brought_.came = guard.Came();
    return status;
}

void UnpackedAhead::Job::Deflate()
{
    const auto tree = ScanTree(brought_.place->Folder(), [this] { return progress_.Step(); });
    if (!tree)
        return;
    for (const Path& file : tree->files) {
        const std::string name = file.filename().native();
        const bool becomesMp3 = owner_.deflate_ == DeflateAhead::AllButWaves &&
                                EndsWithName(name, OnDisk::WavExtension);
        if (progress_.Step() && IsCompressed(name) && !becomesMp3)
            DeflateOne(file);
    }
}

void UnpackedAhead::Job::DeflateOne(const Path& file)
{
    const auto facts = LookAtSpelled(file);
    if (!facts || facts->size > largestDeflated)
        return;
    const auto size = static_cast<std::int64_t>(facts->size);
    std::int64_t took = 0;
    if ((owner_.room_ -= size) >= 0)
        try {
            if (const auto bytes = ReadWholeFile(file, largestDeflated)) {
                std::string stream = CompressZlBytes(*bytes);
                stream.shrink_to_fit();
                took = static_cast<std::int64_t>(stream.size());
                brought_.streams.Add(*facts, std::move(stream));
            }
        } catch (const std::bad_alloc&) {
            took = 0; // it is deflated when it is stored
        }
    owner_.room_ += size - took;
}

UnpackedAhead::UnpackedAhead(Machine& machine, Folders folders, Tools tools, DeflateAhead deflate)
    : machine_(machine), folders_(std::move(folders)), tools_(std::move(tools)), deflate_(deflate),
      room_(mostOfStreams)
{
}

void UnpackedAhead::GiveBack(ReadyStreams& streams)
{
    room_ += static_cast<std::int64_t>(streams.Bytes());
    streams = {};
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
    jobs_.push_back(std::make_unique<Job>(*this, package, options));
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
    auto brought = job->Brought();
    if (brought) {
        GiveBack(streams_);
        streams_ = std::exchange(brought->streams, {});
    }
    return brought;
}

void UnpackedAhead::Drop(const Path& package)
{
    std::erase_if(jobs_, [&](const auto& job) { return job->Package() == package; });
    GiveBack(streams_);
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
