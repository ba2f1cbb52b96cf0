// The undo history of one model: named steps that can be undone and redone, and listeners that are
// notified of changes. Both editors' sessions are built on it: a session turns each edit into
// operations and runs them here; nothing else changes the model. One thread only.
//
// A session describes its edits by a struct of four types:
//   Model      what is edited; must outlive the history, which alone changes it
//   Change     one part of the model that listeners may have to read again; comparable
//   Label      the name of a step and where it happened, for views and their texts
//   Operation  one reversible change, a movable value:
//     void apply(Model&)              Makes the change, also for redo. The first call may throw
//                                     before anything has changed; later calls must not.
//     void revert(Model&) noexcept    Restores exactly what was there before.
//     void prepare(Model&)            Optional. Called before a step is undone, for all of its
//                                     operations: obtains what revert needs. May throw; the model's
//                                     contents stay as they are.
//     vector<Change> changes() const  What either of the two may change. Naming too much is
//                                     allowed, naming too little is not.
//     size_t bytes() const            Approximate memory use.
//     bool absorb(Operation& next)    Optional. `next` was applied right after this one in the same
//                                     gesture: take it over, so that one revert undoes both, and
//                                     return true; or change neither and return false.
#pragma once

#include <algorithm> // IWYU pragma: keep
#include <concepts>  // IWYU pragma: keep
#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "edit/Observers.h"

namespace edit {

/// How much a history keeps; the oldest steps are dropped first.
struct Limits {
    std::size_t steps = 1000;
    std::size_t bytes = std::size_t{64} * 1024 * 1024;
    /// Kept regardless of their size.
    std::size_t leastSteps = 10;
};

template <class Types>
concept EditTypes = std::movable<typename Types::Operation> &&
    std::movable<typename Types::Label> && std::equality_comparable<typename Types::Change> &&
    requires(typename Types::Operation operation, const typename Types::Operation constant,
             typename Types::Model& model) {
    operation.apply(model);
    { operation.revert(model) }
    noexcept;
    { constant.changes() } -> std::same_as<std::vector<typename Types::Change>>;
    { constant.bytes() } -> std::convertible_to<std::size_t>;
};

template <EditTypes Types>
class History {
public:
    using Model = typename Types::Model;
    using Operation = typename Types::Operation;
    using Label = typename Types::Label;
    using Changes = std::vector<typename Types::Change>;
    using Listener = typename Observers<const Changes&>::Listener;

    /// A step in progress: everything from pressing a button or key to releasing it. Destroying it
    /// without commit undoes everything, of which listeners are notified. A gesture that begins
    /// while another is open becomes part of that one and must end before it. Must not outlive the
    /// history. Does nothing any more once the history was cleared.
    class Gesture {
    public:
        Gesture(Gesture&& other) noexcept
            : m_history(std::exchange(other.m_history, nullptr)), m_mark(other.m_mark),
              m_contents(other.m_contents) {}
        Gesture& operator=(Gesture&&) = delete;
        Gesture(const Gesture&) = delete;
        Gesture& operator=(const Gesture&) = delete;
        ~Gesture() { cancel(); }

        /// Applies the operation. If it throws, nothing has changed.
        void run(Operation operation) {
            if (isOpen()) {
                m_history->run(std::move(operation), m_mark);
            }
        }
        /// Notifies listeners of the changes so far, for gestures that span
        /// several events.
        void announce() {
            if (isOpen()) {
                m_history->announce();
            }
        }
        /// Ends the gesture. The outermost one becomes a step unless it is empty.
        void commit() {
            const bool isStep = isOpen() && m_history->endGesture();
            History* history = std::exchange(m_history, nullptr);
            if (isStep) {
                history->announceAlways();
            }
        }
        /// Undoes everything and ends the gesture. Does nothing after a commit.
        void cancel() noexcept {
            const bool wasOpen = isOpen();
            History* history = std::exchange(m_history, nullptr);
            if (wasOpen) {
                history->dropGesture(m_mark);
            }
        }

    private:
        friend class History;
        Gesture(History& history, std::size_t mark)
            : m_history(&history), m_mark(mark), m_contents(history.m_contents) {}
        [[nodiscard]] bool isOpen() const noexcept {
            return m_history != nullptr && m_history->m_contents == m_contents;
        }

        History* m_history;
        std::size_t m_mark;     ///< number of operations that belong to enclosing gestures
        std::size_t m_contents; ///< of the model, when the gesture began
    };

    explicit History(Model& model, Limits limits = {}) : m_model(model), m_limits(limits) {}
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    /// The label of the outermost gesture names the step.
    [[nodiscard]] Gesture begin(Label label) {
        if (m_depth == 0) {
            m_open = Step{std::move(label), {}, 0};
        }
        ++m_depth;
        return Gesture(*this, m_open->operations.size());
    }
    /// A gesture of one operation.
    void run(Label label, Operation operation) {
        Gesture gesture = begin(std::move(label));
        gesture.run(std::move(operation));
        gesture.commit();
    }

    /// Listeners are called once at the end of each gesture, undo and redo, and by
    /// Gesture::announce. Each change is listed once. The list is empty if all changes of a
    /// finished step were announced before: only undoLabel() and the like have changed then. A
    /// listener may make edits, which discards the steps that could be redone; they are announced
    /// together, once all listeners have heard of the changes before.
    [[nodiscard]] Subscription observe(Listener listener) {
        return m_observers.add(std::move(listener));
    }

    /// False, without effect, if there is no such step or a gesture is open.
    bool undo() {
        if (!canUndo()) {
            return false;
        }
        Step& step = m_steps[m_position - 1];
        if constexpr (requires(Operation & operation) { operation.prepare(m_model); }) {
            for (Operation& operation : step.operations) {
                operation.prepare(m_model);
            }
        }
        collect(step.operations);
        revert(step.operations, 0, step.operations.size());
        --m_position;
        announceAlways();
        return true;
    }
    bool redo() {
        if (!canRedo()) {
            return false;
        }
        Step& step = m_steps[m_position];
        collect(step.operations);
        std::size_t applied = 0;
        try {
            for (; applied < step.operations.size(); ++applied) {
                step.operations[applied].apply(m_model);
            }
        } catch (...) {
            revert(step.operations, 0, applied);
            throw;
        }
        ++m_position;
        ++m_revision;
        announceAlways();
        return true;
    }
    [[nodiscard]] bool canUndo() const { return m_depth == 0 && m_position > 0; }
    [[nodiscard]] bool canRedo() const { return m_depth == 0 && m_position < m_steps.size(); }
    /// The step that undo() or redo() would undo or redo; null if there is none. Valid until the
    /// next edit.
    [[nodiscard]] const Label* undoLabel() const {
        return canUndo() ? &m_steps[m_position - 1].label : nullptr;
    }
    [[nodiscard]] const Label* redoLabel() const {
        return canRedo() ? &m_steps[m_position].label : nullptr;
    }

    /// Grows with every change of the model, undo included: equal numbers mean equal contents.
    [[nodiscard]] std::uint64_t revision() const { return m_revision; }
    /// Whether a gesture is open.
    [[nodiscard]] bool inGesture() const { return m_depth > 0; }
    /// How many of the steps are applied; the others can be redone.
    [[nodiscard]] std::size_t position() const { return m_position; }
    [[nodiscard]] std::size_t size() const { return m_steps.size(); }
    /// Approximate memory use of all steps.
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }
    /// Drops all steps because the model's contents were replaced, and notifies listeners of
    /// `changes`. An open gesture ends with them; its operations are not reverted.
    void clear(Changes changes) {
        ++m_contents;
        ++m_revision;
        m_open.reset();
        m_depth = 0;
        m_steps.clear();
        m_position = 0;
        m_bytes = 0;
        m_changes = std::move(changes);
        announceAlways();
    }

private:
    struct Step {
        Label label;
        std::vector<Operation> operations;
        std::size_t bytes;
    };

    void run(Operation operation, std::size_t mark) {
        std::vector<Operation>& operations = m_open->operations;
        operations.push_back(std::move(operation));
        try {
            collect(operations.back());
            operations.back().apply(m_model);
        } catch (...) {
            operations.pop_back();
            throw;
        }
        ++m_revision;
        if constexpr (requires(Operation & next) { operations.back().absorb(next); }) {
            const std::size_t count = operations.size();
            if (count >= mark + 2 && operations[count - 2].absorb(operations.back())) {
                operations.pop_back();
            }
        }
    }
    /// Whether it became a step.
    bool endGesture() {
        const bool isStep = m_depth == 1 && !m_open->operations.empty();
        if (isStep) {
            addStep();
        }
        --m_depth;
        return isStep;
    }
    void addStep() {
        for (const Operation& operation : m_open->operations) {
            m_open->bytes += operation.bytes();
        }
        while (m_steps.size() > m_position) {
            m_bytes -= m_steps.back().bytes;
            m_steps.pop_back();
        }
        m_steps.push_back(std::move(*m_open));
        m_bytes += m_steps.back().bytes;
        ++m_position;
        while (m_steps.size() > m_limits.leastSteps &&
               (m_steps.size() > m_limits.steps || m_bytes > m_limits.bytes)) {
            m_bytes -= m_steps.front().bytes;
            m_steps.pop_front();
            --m_position;
        }
    }
    void dropGesture(std::size_t mark) noexcept {
        try {
            // Listeners may know of these changes already, by Gesture::announce.
            for (std::size_t index = mark; index < m_open->operations.size(); ++index) {
                collect(m_open->operations[index]);
            }
        } catch (const std::exception&) {
            m_changes.clear(); // out of memory: listeners cannot be notified
        }
        revert(m_open->operations, mark, m_open->operations.size());
        m_open->operations.erase(m_open->operations.begin() + static_cast<std::ptrdiff_t>(mark),
                                 m_open->operations.end());
        if (--m_depth > 0) {
            return;
        }
        try {
            announce();
        } catch (const std::exception&) {
            m_changes.clear(); // out of memory: listeners cannot be notified
        }
    }
    void revert(std::vector<Operation>& operations, std::size_t from, std::size_t to) noexcept {
        ++m_revision;
        for (std::size_t index = to; index > from; --index) {
            operations[index - 1].revert(m_model);
        }
    }

    void collect(const Operation& operation) {
        for (auto& change : operation.changes()) {
            if (std::find(m_changes.begin(), m_changes.end(), change) == m_changes.end()) {
                m_changes.push_back(std::move(change));
            }
        }
    }
    void collect(const std::vector<Operation>& operations) {
        for (const Operation& operation : operations) {
            collect(operation);
        }
    }
    void announce() {
        if (!m_changes.empty()) {
            announceAlways();
        }
    }
    void announceAlways() {
        *m_hasNews = true;
        if (m_isNotifying) {
            return; // called by a listener: the call below announces this as well
        }
        // Listeners may destroy the history.
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

    Model& m_model;
    Limits m_limits;
    Observers<const Changes&> m_observers;
    std::deque<Step> m_steps;
    std::size_t m_position = 0;
    std::size_t m_bytes = 0;
    std::optional<Step> m_open;
    int m_depth = 0;
    std::size_t m_contents = 0; ///< counts how often the model's contents were replaced
    std::uint64_t m_revision = 0;
    Changes m_changes; ///< not yet announced
    /// Whether listeners are to be called; shared so that its end is seen.
    std::shared_ptr<bool> m_hasNews = std::make_shared<bool>(false);
    bool m_isNotifying = false;
};

} // namespace edit
