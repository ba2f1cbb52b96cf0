#include "playback/ClipShelf.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <utility>

namespace playback {
namespace {

constexpr std::chrono::seconds kLongestWait{1}; // an upper bound: every change ends it

} // namespace

ClipShelf::ClipShelf(platform::FileSystem& files) : m_files(files), m_thread([this] { work(); }) {}

ClipShelf::~ClipShelf() {
    {
        const theora::TheoraLock lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

bool ClipShelf::isThere(const std::string& path) const {
    return std::any_of(m_ready.begin(), m_ready.end(),
                       [&](const auto& clip) { return clip->path() == path; });
}

std::string ClipShelf::nextToOpen() const {
    for (const std::string& path : m_wanted) {
        if (!isThere(path) && !m_refused.contains(path)) {
            return path;
        }
    }
    return {};
}

void ClipShelf::want(std::vector<std::string> paths) {
    {
        const theora::TheoraLock lock(m_mutex);
        m_wanted = std::move(paths);
        m_refused.clear(); // the file may have come meanwhile
        for (auto& clip : std::exchange(m_ready, {})) {
            const bool isWanted =
                std::find(m_wanted.begin(), m_wanted.end(), clip->path()) != m_wanted.end();
            (isWanted ? m_ready : m_old).push_back(std::move(clip));
        }
    }
    m_changed.notify_all();
}

std::unique_ptr<OpenClip> ClipShelf::take(const std::string& path) {
    {
        const theora::TheoraLock lock(m_mutex);
        while (m_opening == path) {
            m_changed.wait_for(m_mutex, kLongestWait);
        }
        const auto found = std::find_if(m_ready.begin(), m_ready.end(),
                                        [&](const auto& clip) { return clip->path() == path; });
        if (found != m_ready.end()) {
            std::unique_ptr<OpenClip> clip = std::move(*found);
            m_ready.erase(found);
            return clip;
        }
    }
    return OpenClip::open(path, m_files);
}

void ClipShelf::putAway(std::unique_ptr<OpenClip> clip) {
    if (clip) {
        {
            const theora::TheoraLock lock(m_mutex);
            m_old.push_back(std::move(clip));
        }
        m_changed.notify_all();
    }
}

void ClipShelf::work() {
    for (bool goesOn = true; goesOn;) {
        try {
            goesOn = workOnce();
        } catch (const std::bad_alloc&) {
            const theora::TheoraLock lock(m_mutex);
            m_opening.clear();
            m_wanted.clear(); // opening ahead is a luxury
        }
        m_changed.notify_all();
    }
}

bool ClipShelf::workOnce() {
    std::vector<std::unique_ptr<OpenClip>> old; // ended outside of the lock
    std::string path;
    {
        const theora::TheoraLock lock(m_mutex);
        while (!m_isEnding && m_old.empty() && nextToOpen().empty()) {
            m_changed.wait_for(m_mutex, kLongestWait);
        }
        if (m_isEnding) {
            return false;
        }
        old.swap(m_old);
        path = nextToOpen();
        m_opening = path;
    }
    std::unique_ptr<OpenClip> clip = path.empty() ? nullptr : OpenClip::open(path, m_files);
    const theora::TheoraLock lock(m_mutex);
    m_opening.clear();
    if (clip) {
        m_ready.push_back(std::move(clip));
    } else if (!path.empty()) {
        m_refused.insert(path);
    }
    return true;
}

} // namespace playback
