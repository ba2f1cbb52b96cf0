// What has changed since listeners were called last, and calling them. Used by History alone.
#pragma once

#include <algorithm> // IWYU pragma: keep
#include <memory>
#include <utility>
#include <vector>

#include "edit/Observers.h"

namespace edit {

template <class Change>
class Announcements {
public:
    using Changes = std::vector<Change>;
    using Listener = typename Observers<const Changes&>::Listener;

    [[nodiscard]] Subscription observe(Listener listener) {
        return m_observers.add(std::move(listener));
    }

    /// Each change once.
    void collect(Changes changes) {
        for (Change& change : changes) {
            if (std::find(m_changes.begin(), m_changes.end(), change) == m_changes.end()) {
                m_changes.push_back(std::move(change));
            }
        }
    }
    void replace(Changes changes) { m_changes = std::move(changes); }
    void drop() noexcept { m_changes.clear(); }

    void announceIfAny() {
        if (!m_changes.empty()) {
            announce();
        }
    }
    /// Listeners may destroy this object. What they collect is announced behind what is announced
    /// now.
    void announce() {
        *m_hasNews = true;
        if (m_isNotifying) {
            return; // called by a listener: the call below announces this as well
        }
        const std::weak_ptr<bool> hasNews = m_hasNews;
        m_isNotifying = true;
        try {
            while (!hasNews.expired() && *m_hasNews) {
                *m_hasNews = false;
                const Changes changes = std::exchange(m_changes, {});
                m_observers.notify(changes);
            }
        } catch (...) {
            m_isNotifying = false; // out of memory, so before any listener was called
            throw;
        }
        if (!hasNews.expired()) {
            m_isNotifying = false;
        }
    }

private:
    Observers<const Changes&> m_observers;
    Changes m_changes;
    /// Whether listeners are to be called; shared so that its end is seen.
    std::shared_ptr<bool> m_hasNews = std::make_shared<bool>(false);
    bool m_isNotifying = false;
};

} // namespace edit
