#include "storage/file_jobs.h"

#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>

namespace kestrova
{

Status RunFileJobs(std::vector<FileJob> jobs, ProgressScope* progress)
{
    std::stable_sort(jobs.begin(), jobs.end(),
                     [](const FileJob& a, const FileJob& b) { return a.weight > b.weight; });
    std::uint64_t total = 0;
    for (const FileJob& job : jobs)
        total += job.weight;

    Status answer;
    std::mutex mutex;
    std::atomic<bool> failed{false};
    std::atomic<std::uint64_t> done{0};
    std::atomic<std::size_t> latest{jobs.size()};
    const auto run = [&](std::size_t index) {
        if (failed)
            return;
        latest = index;
        Status status;
        try {
            status = jobs[index].run();
        } catch (const std::bad_alloc&) {
            status = MakeFailure(ErrorCode::NoSpace, {},
                                 std::make_error_code(std::errc::not_enough_memory));
        }
        done += jobs[index].weight;
        const std::lock_guard lock{mutex};
        if (!status && !failed.exchange(true))
            answer = std::move(status);
    };
    std::size_t shown = jobs.size();
    const auto heartbeat = [&] {
        if (progress == nullptr)
            return true;
        if (const std::size_t index = latest; index != shown) {
            shown = index;
            progress->SetLabel(jobs[index].label);
        }
        progress->SetBar(done, total);
        return progress->Step();
    };
    const bool all = RunOnAllCores(jobs.size(), run, heartbeat);
    if (!answer)
        return answer;
    if (!all)
        return MakeFailure(ErrorCode::Stopped, {});
    if (progress != nullptr) {
        progress->SetBar(total, total);
        progress->SetLabel({});
    }
    return {};
}

} // namespace kestrova
