// Listeners that may come and go at any time, also while they are being told. Used by the history
// of edits and by the sessions built on it. One thread only.
//
//   edit::Subscription token = session.observe([this](const auto& changes) { refresh(changes); });
//   // the listener is told until `token` is destroyed, reset or assigned another one
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace edit {

/// Keeps one listener registered for its own lifetime. May outlive what it listens to. Move-only.
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

    /// Tells the listeners in the order in which they were added. One that goes away meanwhile is
    /// no longer told; one that is added meanwhile is told from the next time on. A listener may
    /// destroy the object that holds these observers.
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
