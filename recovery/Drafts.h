// Writes unsaved work aside while it is edited, on a thread of its own. Each open document has a
// Draft; all of them share the one Drafts object of the program. UI thread only.
//
//   auto draft = drafts.open(about, [&] { return contentIfUnsaved(); });
//   draft->changed();                      // after each edit
//   draft->saved(savedState(paths));       // after each good save
//
// Writing begins at most kDelay after the first change that no draft has, plus the time until the
// UI thread's loop runs a task. What is written is one state; edits made meanwhile are written
// next.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/FileError.h"
#include "edit/Observers.h"
#include "platform/EventLoop.h"
#include "recovery/DraftFolder.h"
#include "recovery/DraftInfo.h"

namespace recovery {

class Drafts;

/// The unsaved work of one open document. Must not outlive the Drafts object.
class Draft {
public:
    /// What to write now, cheap to make; empty if nothing is unsaved. UI thread.
    using Source = std::function<std::optional<DraftContent>()>;

    /// Has what is not yet in the draft written, which stays for later. Does not wait for that.
    ~Draft();
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    void changed();
    /// Begins to write what has changed without waiting any longer.
    void flush() { update(); }
    /// What has not been written yet will not be.
    void forgetChanges() { m_isDirty = false; }
    /// `base`: savedState() of the document's files now. Removes the draft.
    void saved(std::string base);
    /// Where the list of scenes has the document from now on.
    void setListedAs(std::string name) { m_about.listedAs = std::move(name); }
    /// Continues `folder`, whose draft is becoming the document's contents. `content` is what it
    /// holds: while nothing is unsaved, the folder keeps that until the next good save.
    void restored(std::unique_ptr<DraftFolder> folder, DraftContent content);

    /// For Drafts::open.
    struct Entry;
    Draft(Drafts& drafts, DraftInfo about, Source source);

private:
    friend class Drafts;
    struct Restored {
        DraftInfo info;
        DraftContent content;
    };

    /// Hands over what has changed since the last time.
    void update();
    void clear();

    Drafts& m_drafts;
    std::shared_ptr<Entry> m_entry;
    DraftInfo m_about;
    Source m_source;
    std::optional<Restored> m_restored;
    core::FileError m_failure; ///< of the latest writing
    bool m_isDirty = false;
};

class Drafts {
public:
    static constexpr std::chrono::milliseconds kDelay{1500};
    /// After a failure.
    static constexpr std::chrono::milliseconds kRetryDelay{10000};

    /// `areKept` says whether the author wants drafts. The loop must outlive the object.
    Drafts(platform::EventLoop& loop, std::function<bool()> areKept);
    /// Waits for what is still to be written.
    ~Drafts();
    Drafts(const Drafts&) = delete;
    Drafts& operator=(const Drafts&) = delete;

    /// `about` needs no time, number or sizes.
    [[nodiscard]] std::unique_ptr<Draft> open(DraftInfo about, Draft::Source source);
    /// Waits until what closed documents have left is on the disk and free for others, though not
    /// for long if the disk does not answer. Before looking for kept drafts.
    void settle();
    /// Whether unsaved work is written aside: the author wants that, and it has not failed.
    [[nodiscard]] bool isKeeping() const { return m_areKept() && m_failure.empty(); }
    /// `areKept` answers differently now: drops all drafts, or writes what is unsaved.
    void keepingChanged();
    /// Why the draft of an open document could not be written; empty if all were.
    [[nodiscard]] const core::FileError& failure() const { return m_failure; }
    /// The listener is called whenever failure() has changed.
    [[nodiscard]] edit::Subscription observe(std::function<void()> listener) {
        return m_observers.add(std::move(listener));
    }

private:
    friend class Draft;

    // UI thread.
    void requestUpdate(std::chrono::milliseconds delay);
    void updateAll();
    void enqueue(const std::shared_ptr<Draft::Entry>& entry, std::function<core::FileError()> work);
    void finished(const std::weak_ptr<Draft::Entry>& entry, const core::FileError& failure);
    void logOnce(const core::FileError& failure);
    /// Updates failure().
    void updateFailure();

    // The other thread, which holds the mutex.
    void run();
    void perform(std::unique_lock<std::mutex>& lock);
    /// To the UI thread.
    void post(std::function<void()> task);

    platform::EventLoop& m_loop;
    std::function<bool()> m_areKept;
    std::vector<Draft*> m_open;
    core::FileError m_failure;
    core::FileError m_threadFailure; ///< there is no thread
    bool m_isLogged = false;
    edit::Observers<> m_observers;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true); ///< for what was posted

    // Guarded by the mutex.
    std::deque<std::shared_ptr<Draft::Entry>> m_queue;
    std::optional<std::int64_t> m_due; ///< of the next updateAll, in ticks of the clock
    bool m_isBusy = false;
    bool m_isEnding = false;
    core::FileError m_latestFailure;

    std::mutex m_mutex;
    std::condition_variable m_work; ///< for the other thread
    std::condition_variable m_done; ///< by the other thread
    std::thread m_thread;
};

} // namespace recovery
