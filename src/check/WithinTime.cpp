#include "check/WithinTime.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace corvane {

bool RunWithin(std::chrono::milliseconds limit, std::vector<std::function<void()>> works) {
    struct Running {
        std::mutex mutex;
        std::condition_variable ended;
        std::size_t count;
    };
    const auto deadline = std::chrono::steady_clock::now() + limit;
    const auto running = std::make_shared<Running>();
    running->count = works.size();
    for (std::function<void()>& work : works) {
        std::thread([running, run = std::move(work)]() mutable {
            run();
            run = nullptr;  // what it owned is gone before anybody counts on it
            const std::scoped_lock lock(running->mutex);
            --running->count;
            running->ended.notify_one();
        }).detach();
    }
    std::unique_lock lock(running->mutex);
    return running->ended.wait_until(lock, deadline, [&] { return running->count == 0; });
}

}  // namespace corvane
