#include "import/ImportQueue.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <utility>

#include "import/ConverterRun.h"
#include "import/ImportJob.h"
#include "import/Look.h"
#include "import/Source.h"

namespace imports {

/// Shared by the queue and the thread that works for it.
struct ImportTask {
    JobRequest request;
    int id = 0;

    std::atomic<int> percent{0};
    std::atomic<double> secondsLeft{-1};
    // Written before the work ends, read after it.
    LookResult look;
    JobResult result;
};

namespace {

template <class Items>
auto* itemIn(Items& items, int id) {
    const auto found = std::find_if(items.begin(), items.end(),
                                    [id](const ImportItem& item) { return item.id == id; });
    return found == items.end() ? nullptr : &*found;
}

} // namespace

ImportQueue::ImportQueue(platform::EventLoop& loop, platform::FileSystem& files, std::string folder)
    : m_files(files), m_folder(std::move(folder)), m_looking(loop), m_converting(loop) {}

ImportQueue::~ImportQueue() {
    m_looking.cancel();
    m_converting.cancel();
}

int ImportQueue::add(const std::string& source) {
    return append({.kind = ImportKind::file, .source = source});
}

int ImportQueue::addRemake(const std::string& clip) {
    return append({.kind = ImportKind::remake, .source = m_folder + clip});
}

int ImportQueue::append(ImportItem item) {
    item.id = ++m_lastId;
    m_items.push_back(std::move(item));
    m_orders.emplace_back();
    changed();
    return m_lastId;
}

void ImportQueue::keepBoth(int id) {
    retry(id, Failure::nameTaken, &Order::takesFreeName);
}

void ImportQueue::importReadable(int id) {
    retry(id, Failure::cut, &Order::takesReadable);
}

void ImportQueue::retry(int id, Failure after, bool Order::*choice) {
    ImportItem* const item = itemOf(id);
    if (item == nullptr || item->state != ImportState::failed || item->failure.kind != after) {
        return;
    }
    m_orders[static_cast<std::size_t>(item - m_items.data())].*choice = true;
    item->state = ImportState::waiting;
    item->failure = {};
    changed();
}

void ImportQueue::cancel(int id) {
    ImportItem* const item = itemOf(id);
    if (item != nullptr && item->state == ImportState::converting) {
        m_converting.cancel(); // its end says that it is cancelled
    } else if (item != nullptr && item->state == ImportState::waiting) {
        stopWaiting(*item);
        changed();
    }
}

void ImportQueue::stopWaiting(ImportItem& item) {
    item.state = ImportState::cancelled;
    if (item.id == m_lookedAt) {
        m_looking.cancel(); // else a probe that hangs would hold up the others
    }
}

void ImportQueue::cancelAll() {
    for (ImportItem& item : m_items) {
        if (item.state == ImportState::waiting) {
            stopWaiting(item);
        }
    }
    m_converting.cancel();
    changed();
}

void ImportQueue::remove(int id) {
    ImportItem* const item = itemOf(id);
    if (item != nullptr && !isUnderWay(item->state)) {
        m_orders.erase(m_orders.begin() + (item - m_items.data()));
        m_items.erase(m_items.begin() + (item - m_items.data()));
        changed();
    }
}

ImportItem* ImportQueue::itemOf(int id) {
    return itemIn(m_items, id);
}

const ImportItem* ImportQueue::find(int id) const {
    return itemIn(m_items, id);
}

bool ImportQueue::isBusy() const {
    return std::any_of(m_items.begin(), m_items.end(),
                       [](const ImportItem& item) { return isUnderWay(item.state); });
}

int ImportQueue::percent() const {
    double done = 0;
    double all = 0;
    for (const ImportItem& item : m_items) {
        if (item.state == ImportState::cancelled || item.state == ImportState::failed) {
            continue;
        }
        // Long files count for more; a minute stands for those not looked at yet.
        const double length = item.facts && item.facts->seconds > 0 ? item.facts->seconds : 60;
        all += length;
        done += item.state == ImportState::done ? length : length * item.percent / 100.0;
    }
    return all > 0 ? static_cast<int>(std::floor(done * 100 / all + 1e-9)) : 0;
}

void ImportQueue::changed() {
    startNext();
    if (onChanged) {
        onChanged();
    }
}

void ImportQueue::startNext() {
    if (!m_looking.isRunning()) {
        const auto next = std::find_if(m_items.begin(), m_items.end(), [](const ImportItem& item) {
            return item.state == ImportState::waiting && !item.facts;
        });
        if (next != m_items.end()) {
            look(*next);
        }
    }
    if (!m_converting.isRunning()) {
        const auto next = std::find_if(m_items.begin(), m_items.end(), [](const ImportItem& item) {
            return item.state == ImportState::waiting && item.facts;
        });
        if (next != m_items.end()) {
            convert(*next);
        }
    }
}

std::shared_ptr<ImportTask> ImportQueue::taskFor(const ImportItem& item) const {
    const Order& order = m_orders[static_cast<std::size_t>(&item - m_items.data())];
    auto task = std::make_shared<ImportTask>();
    task->id = item.id;
    task->request.kind = item.kind;
    task->request.source = item.source;
    task->request.folder = m_folder;
    task->request.converter = m_converter;
    task->request.limits.run.isBackground = true;
    task->request.settings = m_settings;
    task->request.takesFreeName = order.takesFreeName;
    task->request.takesReadable = order.takesReadable;
    return task;
}

void ImportQueue::look(ImportItem& item) {
    const auto task = taskFor(item);
    m_lookedAt = item.id;
    m_looking.start(
        [task, &files = m_files](jobs::BackgroundJob::Control& control) {
            const JobRequest& request = task->request;
            task->look = lookAt(files, request.source, request.converter, request.limits.run,
                                [&control] { return control.isCancelled(); });
        },
        [] {}, [this, task](bool isWhole) { takeLook(*task, isWhole); });
}

void ImportQueue::takeLook(const ImportTask& task, bool isWhole) {
    ImportItem* const item = itemOf(task.id);
    m_lookedAt = 0;
    if (item != nullptr && item->state == ImportState::waiting) {
        if (isWhole && task.look.source) {
            item->facts = factsOf(*task.look.source);
        } else {
            item->state = ImportState::failed;
            item->failure = isWhole ? task.look.failure : ImportFailure{Failure::noMemory};
        }
    }
    changed();
}

void ImportQueue::convert(ImportItem& item) {
    const std::shared_ptr<ImportTask> task = taskFor(item);
    m_converting.start(
        [task, &files = m_files](jobs::BackgroundJob::Control& control) {
            const ProgressSink onProgress = [&](int percent, double secondsLeft) {
                task->percent = percent;
                task->secondsLeft = secondsLeft;
                control.report();
            };
            task->result = runImport(files, task->request, onProgress,
                                     [&control] { return control.isCancelled(); });
        },
        [this] { takeProgress(); }, [this](bool isWhole) { takeResult(isWhole); });
    // Not before: without memory for the job, the item goes on waiting.
    m_task = task;
    item.state = ImportState::converting;
    item.percent = 0;
    item.secondsLeft = -1;
}

void ImportQueue::takeProgress() {
    ImportItem* const item = itemOf(m_task->id);
    if (item != nullptr && item->state == ImportState::converting) {
        item->percent = m_task->percent;
        item->secondsLeft = m_task->secondsLeft;
    }
    changed();
}

void ImportQueue::takeResult(bool isWhole) {
    const std::shared_ptr<ImportTask> task = std::move(m_task);
    ImportItem* const item = itemOf(task->id); // one that converts cannot be removed
    item->state = isWhole ? task->result.state : ImportState::failed;
    item->failure = isWhole ? task->result.failure : ImportFailure{Failure::noMemory};
    item->clip = task->result.clip;
    if (item->state == ImportState::done && onDone) {
        item->percent = 100;
        const ImportItem finished = *item; // the list may change meanwhile
        onDone(finished);
    }
    changed();
}

} // namespace imports
