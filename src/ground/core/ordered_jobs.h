#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace kestrova
{

/// Jobs that are begun in order on all cores while their owner takes the results in the same order,
/// one after the other. Not more than `ahead` jobs are begun beyond the one that is waited for.
class OrderedJobs
{
public:
    /// Jobs must not throw.
    OrderedJobs(std::size_t count, std::size_t ahead, std::function<void(std::size_t)> job);
    /// Begins no further job; those under way are waited for.
    ~OrderedJobs();
    OrderedJobs(const OrderedJobs&) = delete;
    OrderedJobs& operator=(const OrderedJobs&) = delete;

    /// True when the job is done. The first wait for a job says that those before it are taken.
    bool WaitFor(std::size_t index, std::chrono::milliseconds slice);
    static std::size_t Cores();

private:
    void Work();

    std::function<void(std::size_t)> job_;
    std::size_t ahead_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<bool> done_;
    std::size_t next_ = 0;
    std::size_t head_ = 0;
    bool ended_ = false;
    std::vector<std::jthread> threads_; ///< last, so that they are joined first
};

} // namespace kestrova
