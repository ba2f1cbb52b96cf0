#include <algorithm>
#include <latch>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

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

TEST(EventLoop, AQuitWithoutALoopEndsTheNextOne) {
    EventLoop& loop = test::gui().loop();
    loop.postQuit(3);
    EXPECT_EQ(loop.run(), 3);
    loop.post([&] { loop.postQuit(4); });
    EXPECT_EQ(loop.run(), 4);
}

TEST(EventLoop, RunsTasksOfEveryThreadOnItsOwnInTheirOrder) {
    constexpr int kThreads = 4;
    constexpr int kTasks = 500;
    EventLoop& loop = test::gui().loop();
    const auto uiThread = std::this_thread::get_id();
    std::vector<std::vector<int>> seen(kThreads);
    int finished = 0;
    std::latch start(kThreads);
    std::vector<std::jthread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            start.arrive_and_wait();
            for (int i = 0; i < kTasks; ++i) {
                loop.post([&, t, i] {
                    EXPECT_EQ(std::this_thread::get_id(), uiThread);
                    seen[static_cast<std::size_t>(t)].push_back(i);
                });
            }
            loop.post([&] { loop.postQuit(++finished); });
        });
    }
    while (finished < kThreads) {
        loop.run();
    }
    for (const auto& tasks : seen) {
        ASSERT_EQ(tasks.size(), static_cast<std::size_t>(kTasks));
        EXPECT_TRUE(std::is_sorted(tasks.begin(), tasks.end()));
    }
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
