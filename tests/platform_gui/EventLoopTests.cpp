#include <array>
#include <numeric>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Gate.h"
#include "tests/support/gui/TestGui.h"

using platform::EventLoop;

TEST(EventLoop, EndsTheInnermostOfNestedLoopsOnly) {
    EventLoop& loop = test::gui().loop();
    std::vector<int> steps;
    loop.post([&] {
        steps.push_back(1);
        loop.post([&] {
            steps.push_back(2);
            loop.postQuit(20);
        });
        EXPECT_EQ(loop.run(), 20);
        steps.push_back(3);
        loop.postQuit(10);
    });
    EXPECT_EQ(loop.run(), 10);
    EXPECT_EQ(steps, (std::vector<int>{1, 2, 3}));
}

TEST(EventLoop, HandlesWhatWasPostedBeforeTheQuit) {
    EventLoop& loop = test::gui().loop();
    int done = 0;
    loop.post([&] {
        loop.post([&] { ++done; });
        loop.post([&] { ++done; });
        loop.postQuit(0);
    });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(done, 2);
}

TEST(EventLoop, AQuitIsNotTakenByALoopThatStartsAfterIt) {
    EventLoop& loop = test::gui().loop();
    std::vector<int> codes;
    loop.post([&] {
        loop.post([&] {
            loop.post([&] { loop.postQuit(7); });
            codes.push_back(loop.run());
        });
        loop.postQuit(5);
    });
    codes.push_back(loop.run());
    EXPECT_EQ(codes, (std::vector<int>{7, 5}));
}

TEST(EventLoop, RunsTasksOfEveryThreadOnItsOwnInTheirOrder) {
    constexpr int kTasks = 500;
    EventLoop& loop = test::gui().loop();
    const auto uiThread = std::this_thread::get_id();
    std::array<int, 4> next{};
    support::Gate start;
    std::vector<std::jthread> threads;
    for (int& expected : next) {
        threads.emplace_back([&] {
            start.wait();
            for (int i = 0; i < kTasks; ++i) {
                loop.post([&expected, uiThread, i] {
                    EXPECT_EQ(std::this_thread::get_id(), uiThread);
                    EXPECT_EQ(expected++, i);
                });
            }
        });
    }
    start.open();
    EXPECT_TRUE(test::pumpUntil(
        [&] { return std::accumulate(next.begin(), next.end(), 0) == 4 * kTasks; }));
}

TEST(EventLoop, OutlivesATaskThatThrows) {
    EventLoop& loop = test::gui().loop();
    testing::internal::CaptureStderr();
    loop.post([] { throw std::runtime_error("broken task"); });
    loop.post([] { throw 1; });
    loop.post([&] { loop.postQuit(9); });
    EXPECT_EQ(loop.run(), 9);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("broken task"), std::string::npos);
}
