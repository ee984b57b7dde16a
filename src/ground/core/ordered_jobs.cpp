#include "core/ordered_jobs.h"

#include <algorithm>

namespace kestrova
{

std::size_t OrderedJobs::Cores()
{
    return std::max(1U, std::thread::hardware_concurrency());
}

OrderedJobs::OrderedJobs(std::size_t count, std::size_t ahead, std::function<void(std::size_t)> job)
    : job_(std::move(job)), ahead_(ahead), done_(count)
{
    const std::size_t wanted = std::min({Cores(), count, ahead + 1});
    for (std::size_t i = 0; i < wanted; ++i)
        threads_.emplace_back([this] { Work(); });
}

OrderedJobs::~OrderedJobs()
{
    {
        const std::lock_guard lock{mutex_};
        ended_ = true;
    }
    changed_.notify_all();
}

void OrderedJobs::Work()
{
    std::unique_lock lock{mutex_};
    for (;;) {
        changed_.wait(lock,
                      [&] { return ended_ || next_ >= done_.size() || next_ <= head_ + ahead_; });
        if (ended_ || next_ >= done_.size())
            return;
        const std::size_t index = next_++;
        lock.unlock();
        job_(index);
        lock.lock();
        done_[index] = true;
        changed_.notify_all();
    }
}

bool OrderedJobs::WaitFor(std::size_t index, std::chrono::milliseconds slice)
{
    std::unique_lock lock{mutex_};
    if (index > head_) {
        head_ = index;
        changed_.notify_all();
    }
    return changed_.wait_for(lock, slice, [&] { return bool{done_[index]}; });
}

} // namespace kestrova
