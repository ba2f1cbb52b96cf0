// Follows a zone on a thread while a window shows how far it has come. UI thread only.
#pragma once

#include <functional>

#include "follow/Following.h"
#include "jobs/BackgroundJob.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"

namespace follow {

class FollowJob {
public:
    /// Both outlive it.
    FollowJob(platform::EventLoop& loop, platform::FileSystem& files);
    /// Stops the work and waits for it, which takes one frame at most. Nothing is called any more.
    ~FollowJob();
    FollowJob(const FollowJob&) = delete;
    FollowJob& operator=(const FollowJob&) = delete;

    /// Calls `onNews` now and then with the latest, and `onDone` once. Not while it is running.
    void start(Request request, std::function<void(const News&)> onNews,
               std::function<void(const Outcome&)> onDone);
    /// The work ends with the frame it is at; `onDone` brings what was found.
    void stop() { m_job.cancel(); }
    [[nodiscard]] bool isRunning() const { return m_job.isRunning(); }

private:
    struct Shared;

    platform::FileSystem& m_files;
    jobs::BackgroundJob m_job; ///< last: its thread goes first
};

} // namespace follow
