#include "check/WithinTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>

namespace corvane::test {
namespace {

// Threads that end while others begin, and throw: what their library keeps of each must be its own.
TEST(WithinTime, ManyShortWorksEnd) {
    constexpr int rounds = 300;
    std::atomic<int> caught = 0;
    const auto throwing = [&] {
        try {
            throw std::runtime_error("x");
        } catch (const std::runtime_error&) {
            ++caught;
        }
    };
    for (int round = 0; round < rounds; ++round)
        ASSERT_TRUE(RunWithin(std::chrono::seconds(10), {throwing, throwing, throwing, throwing}));
    EXPECT_EQ(caught, 4 * rounds);
}

TEST(WithinTime, WhatHangsIsLeftBehind) {
    std::promise<void> wakeUp;
    std::promise<void> ended;
    const std::shared_future<void> woken(wakeUp.get_future());
    EXPECT_FALSE(RunWithin(std::chrono::milliseconds(50), {[&, woken] {
                               woken.wait();
                               ended.set_value();
                           }}));
    wakeUp.set_value();
    ended.get_future().wait();
}

}  // namespace
}  // namespace corvane::test
