// Listeners that may be added and removed at any time, even during a notification. Used by the undo
// history and the sessions built on it. One thread only.
//
//   edit::Subscription token = session.observe([this](const auto& changes) { refresh(changes); });
//   // the listener is called until `token` is destroyed, reset or reassigned
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace edit {

/// Keeps a listener registered for its lifetime. May outlive the object it listens to. Move-only.
class Subscription {
public:
    Subscription() = default;
    Subscription(Subscription&&) noexcept = default;
    Subscription& operator=(Subscription&&) noexcept = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() = default;

    void reset() { m_listener.reset(); }

private:
    template <class... Arguments>
    friend class Observers;
    explicit Subscription(std::shared_ptr<void> listener) : m_listener(std::move(listener)) {}

    std::shared_ptr<void> m_listener;
};

template <class... Arguments>
class Observers {
public:
    /// Must not throw.
    using Listener = std::function<void(Arguments...)>;

    [[nodiscard]] Subscription add(Listener listener) {
        std::erase_if(m_listeners, [](const auto& entry) { return entry.expired(); });
        auto entry = std::make_shared<Listener>(std::move(listener));
        m_listeners.push_back(entry);
        return Subscription(std::move(entry));
    }

    /// Calls the listeners in the order in which they were added. A listener removed meanwhile is
    /// not called any more; one added meanwhile is called from the next notification on. A listener
    /// may destroy the object that owns these observers.
    void notify(Arguments... arguments) const {
        const std::vector<std::weak_ptr<Listener>> current = m_listeners;
        for (const std::weak_ptr<Listener>& entry : current) {
            if (const std::shared_ptr<Listener> listener = entry.lock()) {
                (*listener)(arguments...);
            }
        }
    }

private:
    std::vector<std::weak_ptr<Listener>> m_listeners;
};

} // namespace edit
