#include "check/WithinTime.h"

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace corvane {
namespace {

// Ended ones are joined. Others are left behind for good: neither waited for, nor detached. MinGW's
// threads give the memory of one that is detached while it ends away twice, and the next one that
// throws spins for ever.
struct Threads {
    Threads() = default;
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;
    ~Threads() {
        if (ended) {
            std::ranges::for_each(all, &std::thread::join);
            return;
        }
        static std::mutex mutex;
        static auto* const leftBehind = std::make_unique<std::vector<std::thread>>().release();
        const std::scoped_lock lock(mutex);
        std::ranges::move(all, std::back_inserter(*leftBehind));
    }

    std::vector<std::thread> all;
    bool ended = false;
};

}  // namespace

bool RunWithin(std::chrono::milliseconds limit, std::vector<std::function<void()>> works) {
    struct Running {
        std::mutex mutex;
        std::condition_variable ended;
        std::size_t count;
    };
    const auto deadline = std::chrono::steady_clock::now() + limit;
    const auto running = std::make_shared<Running>();
    running->count = works.size();
    Threads threads;
    for (std::function<void()>& work : works) {
        threads.all.emplace_back([running, run = std::move(work)]() mutable {
            run();
            run = nullptr;  // what it owned is gone before anybody counts on it
            const std::scoped_lock lock(running->mutex);
            --running->count;
            running->ended.notify_one();
        });
    }
    std::unique_lock lock(running->mutex);
    threads.ended = running->ended.wait_until(lock, deadline, [&] { return running->count == 0; });
    return threads.ended;
}

}  // namespace corvane
