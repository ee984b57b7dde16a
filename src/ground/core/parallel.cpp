#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace kestrova
{

bool RunOnAllCores(std::size_t count, const std::function<void(std::size_t)>& job,
                   const Heartbeat& heartbeat)
{
    if (count == 0)
        return true;
    std::atomic<std::size_t> next{0};
    std::atomic<bool> stop{false};
    std::mutex mutex;
    std::condition_variable finished;
    std::size_t running = 0;
    {
        const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
        std::vector<std::jthread> threads;
        running = std::min(cores, count);
        for (std::size_t i = 0, wanted = running; i < wanted; ++i)
            threads.emplace_back([&] {
                for (std::size_t index = 0; !stop && (index = next++) < count;)
                    job(index);
                const std::lock_guard lock{mutex};
                --running;
                finished.notify_one();
            });
        std::unique_lock lock{mutex};
        while (
            !finished.wait_for(lock, std::chrono::milliseconds{30}, [&] { return running == 0; })) {
            lock.unlock();
            if (!stop && heartbeat && !heartbeat())
                stop = true;
            lock.lock();
        }
    }
    return next >= count && !stop;
}

} // namespace kestrova
