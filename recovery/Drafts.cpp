#include "recovery/Drafts.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "core/Log.h"
#include "core/Services.h"
#include "platform/Clock.h"
#include "recovery/Places.h"

namespace recovery {
namespace {

/// How long the thread sleeps at most while something is due: the clock need not be the system's.
constexpr std::chrono::milliseconds kNap{20};
/// How long the UI thread waits for a disk that does not answer.
constexpr std::chrono::seconds kPatience{10};

std::int64_t ticks() {
    return core::services().clock->ticks();
}

} // namespace

/// What the threads share of a draft.
struct Draft::Entry {
    // The other thread's while work is queued or running.
    std::string sceneFolder;
    std::unique_ptr<DraftFolder> folder;

    // Guarded by the mutex of Drafts.
    std::function<core::FileError()> next;
    bool isQueued = false;

    [[nodiscard]] core::FileError write(const DraftInfo& info, const DraftContent& content) {
        if (folder && !folder->isOurs()) {
            folder.reset();
        }
        core::FileError reason;
        if (!folder) {
            folder = DraftFolder::claim(sceneFolder, reason);
        }
        return folder ? folder->write(info, content) : reason;
    }
    void clear() {
        if (folder) {
            folder->clear();
            folder.reset();
        }
    }
};

Draft::Draft(Drafts& drafts, DraftInfo about, Source source)
    : m_drafts(drafts), m_entry(std::make_shared<Entry>()), m_about(std::move(about)),
      m_source(std::move(source)) {
    m_entry->sceneFolder = draftsFolder() + encodedName(m_about.scene) + "/";
    m_drafts.m_open.push_back(this);
}

Draft::~Draft() {
    std::erase(m_drafts.m_open, this);
    try {
        update();
        m_drafts.updateFailure();
    } catch (const std::exception&) {
        return; // out of memory: what was written last remains
    }
}

void Draft::changed() {
    m_isDirty = true;
    m_drafts.requestUpdate(Drafts::kDelay);
}

void Draft::update() {
    if (!m_isDirty) {
        return;
    }
    DraftInfo info = m_about;
    info.time = core::services().clock->now();
    std::optional<DraftContent> content;
    if (m_drafts.m_areKept()) {
        content = m_source();
    }
    if (!content && m_restored) {
        info = m_restored->info;
        content = m_restored->content;
    }
    if (!content) {
        clear();
    } else { // captures no owner of the entry: the entry owns the work
        m_drafts.enqueue(m_entry, [entry = m_entry.get(), info, content = *std::move(content)] {
            return entry->write(info, content);
        });
    }
    m_isDirty = false; // no sooner: all of the above may lack memory
}

void Draft::clear() {
    m_drafts.enqueue(m_entry, [entry = m_entry.get()] {
        entry->clear();
        return core::FileError();
    });
}

void Draft::saved(std::string base) {
    m_about.base = std::move(base);
    m_restored.reset();
    m_isDirty = false;
    clear();
}

void Draft::restored(std::unique_ptr<DraftFolder> folder, DraftContent content) {
    m_restored = Restored{folder->info(), std::move(content)};
    auto entry = std::make_shared<Entry>();
    entry->sceneFolder = m_entry->sceneFolder;
    entry->folder = std::move(folder);
    clear(); // what the old one holds is a step further back in the same history
    m_entry = std::move(entry);
    m_failure = {};
    m_drafts.updateFailure();
}

Drafts::Drafts(platform::EventLoop& loop, std::function<bool()> areKept)
    : m_loop(loop), m_areKept(std::move(areKept)) {
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::exception& error) {
        m_isEnding = true;
        m_threadFailure = {{}, error.what()};
        logOnce(m_threadFailure);
        updateFailure();
    }
}

Drafts::~Drafts() {
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
    }
    m_work.notify_all();
    if (m_thread.joinable()) {
        m_thread.join();
    }
    try {
        logOnce(m_latestFailure); // which may be of work that the loop has not heard about
    } catch (const std::exception&) {
        return; // a line less in the log
    }
}

std::unique_ptr<Draft> Drafts::open(DraftInfo about, Draft::Source source) {
    return std::make_unique<Draft>(*this, std::move(about), std::move(source));
}

void Drafts::requestUpdate(std::chrono::milliseconds delay) {
    const std::int64_t due = ticks() + delay.count();
    {
        const std::scoped_lock lock(m_mutex);
        if (m_due && *m_due <= due) {
            return;
        }
        m_due = due;
    }
    m_work.notify_all();
}

void Drafts::keepingChanged() {
    for (Draft* draft : m_open) {
        draft->m_isDirty = true;
    }
    updateAll();
}

void Drafts::updateAll() {
    for (Draft* draft : m_open) {
        try {
            draft->update();
        } catch (const std::bad_alloc&) {
            requestUpdate(kRetryDelay);
        }
    }
}

void Drafts::finished(const std::weak_ptr<Draft::Entry>& entry, const core::FileError& failure) {
    const auto isOf = [ended = entry.lock()](const Draft* draft) {
        return draft->m_entry == ended;
    };
    const auto draft = std::find_if(m_open.begin(), m_open.end(), isOf);
    logOnce(failure);
    if (draft == m_open.end()) {
        return;
    }
    (*draft)->m_failure = failure;
    if (!failure.empty()) {
        (*draft)->m_isDirty = true;
        requestUpdate(kRetryDelay);
    }
    updateFailure();
}

void Drafts::logOnce(const core::FileError& failure) {
    if (!failure.empty() && !std::exchange(m_isLogged, true)) {
        core::Log::get()->Error("Unable to keep unsaved work: %s", failure.text().c_str());
    }
}

void Drafts::updateFailure() {
    const auto failed = std::find_if(m_open.begin(), m_open.end(),
                                     [](const Draft* draft) { return !draft->m_failure.empty(); });
    const core::FileError& failure =
        failed == m_open.end() ? m_threadFailure : (*failed)->m_failure;
    if (failure.text() != m_failure.text()) {
        m_failure = failure;
        m_observers.notify();
    }
}

void Drafts::enqueue(const std::shared_ptr<Draft::Entry>& entry,
                     std::function<core::FileError()> work) {
    {
        const std::scoped_lock lock(m_mutex);
        if (m_isEnding) {
            return;
        }
        entry->next = std::move(work);
        if (!std::exchange(entry->isQueued, true)) {
            m_queue.push_back(entry);
        }
    }
    m_work.notify_all();
}

void Drafts::settle() {
    std::unique_lock lock(m_mutex);
    m_done.wait_for(lock, kPatience, [&] { return m_queue.empty() && !m_isBusy; });
}

void Drafts::run() {
    std::unique_lock lock(m_mutex);
    while (!m_isEnding || !m_queue.empty()) {
        if (!m_queue.empty()) {
            perform(lock);
        } else if (!m_due) {
            m_work.wait(lock);
        } else if (const std::int64_t left = *m_due - ticks(); left > 0) {
            m_work.wait_for(lock, std::min(std::chrono::milliseconds(left), kNap));
        } else {
            m_due.reset();
            post([this] { updateAll(); });
        }
    }
}

void Drafts::perform(std::unique_lock<std::mutex>& lock) {
    std::shared_ptr<Draft::Entry> entry = std::move(m_queue.front());
    m_queue.pop_front();
    auto work = std::exchange(entry->next, nullptr);
    entry->isQueued = false;
    m_isBusy = true;
    lock.unlock();
    core::FileError failure;
    try {
        failure = work();
    } catch (const std::exception& error) {
        failure.reason = error.what();
    }
    work = nullptr; // what it wrote may be large, and the UI thread must not wait for its end
    const std::weak_ptr ended(entry);
    entry = nullptr; // frees the folder of a closed document
    lock.lock();
    m_isBusy = false;
    m_latestFailure = failure.empty() ? m_latestFailure : failure;
    m_done.notify_all();
    post([this, ended, failure] { finished(ended, failure); });
}

void Drafts::post(std::function<void()> task) {
    try {
        m_loop.post([alive = std::weak_ptr(m_alive), task = std::move(task)] {
            if (!alive.expired()) {
                task();
            }
        });
    } catch (const std::exception&) {
        m_due = ticks(); // no memory: the next attempt asks for everything again
    }
}

} // namespace recovery
