// Work on a thread of its own: what is reported, when, and what ends it.
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

#include "jobs/BackgroundJob.h"
#include "tests/support/Gate.h"
#include "tests/support/TaskLoop.h"

namespace {

using jobs::BackgroundJob;

class BackgroundJobTest : public testing::Test {
protected:
    void start(BackgroundJob::Work work) {
        m_job->start(
            std::move(work), [this] { ++m_shown; }, [this](bool isWhole) { m_whole = isWhole; });
    }
    bool finish() {
        while (!m_whole) {
            m_loop.processEvents(true);
        }
        EXPECT_FALSE(m_job->isRunning());
        return *std::exchange(m_whole, std::nullopt);
    }

    support::TaskLoop m_loop;
    std::optional<BackgroundJob> m_job{m_loop};
    int m_shown = 0;
    std::optional<bool> m_whole;
};

TEST_F(BackgroundJobTest, ReportsTheLatestProgressAndTheEndOnce) {
    const auto count = std::make_shared<int>(0);
    start([count](auto& control) {
        for (; *count < 1000; ++*count) {
            control.report();
        }
    });
    EXPECT_TRUE(m_job->isRunning());
    EXPECT_TRUE(finish());
    EXPECT_EQ(*count, 1000);
    EXPECT_TRUE(m_shown >= 1 && m_shown <= 1000);
    start([](auto&) { throw std::runtime_error("no memory"); });
    EXPECT_FALSE(finish());
    m_loop.failures = 2;
    start([](auto& control) {
        while (!control.isCancelled()) {
        }
    });
    m_job->cancel();
    EXPECT_TRUE(finish());
}

TEST_F(BackgroundJobTest, AnAbandonedJobEndsAndReportsNothing) {
    support::Gate begun;
    start([&](auto& control) {
        control.report();
        begun.open();
        while (!control.isCancelled()) {
        }
    });
    begun.wait();
    m_job.reset();
    m_loop.processEvents(false);
    EXPECT_EQ(m_shown, 0);
    EXPECT_FALSE(m_whole);
    // The callback at the end may destroy the job.
    m_job.emplace(m_loop);
    m_job->start([](auto&) {}, nullptr, [this](bool) { m_job.reset(); });
    while (m_job) {
        m_loop.processEvents(true);
    }
}

} // namespace
