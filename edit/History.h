// The undo history of one model: named steps that can be undone and redone, and listeners that are
// notified of changes. Both editors' sessions are built on it: a session turns each edit into
// operations and runs them here; nothing else changes the model. One thread only.
//
// A session describes its edits by a struct of four types: edit/EditTypes.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "edit/Announcements.h"
#include "edit/EditTypes.h" // IWYU pragma: keep (its concept)
#include "edit/Observers.h"
#include "edit/Steps.h"

namespace edit {

template <EditTypes Types>
class History {
public:
    using Model = typename Types::Model;
    using Operation = typename Types::Operation;
    using Label = typename Types::Label;
    using Changes = std::vector<typename Types::Change>;
    using Listener = typename Announcements<typename Types::Change>::Listener;

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
        /// Notifies listeners of the changes so far, for gestures that span several events.
        void announce() {
            if (isOpen()) {
                m_history->m_announcements.announceIfAny();
            }
        }
        /// Ends the gesture. The outermost one becomes a step unless it is empty.
        void commit() {
            const bool isStep = isOpen() && m_history->endGesture();
            History* history = std::exchange(m_history, nullptr);
            if (isStep) {
                history->m_announcements.announce();
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

    explicit History(Model& model, Limits limits = {}) : m_model(model), m_steps(limits) {}
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    /// The label of the outermost gesture names the step.
    [[nodiscard]] Gesture begin(Label label) {
        if (m_depth == 0) {
            m_open = Step<Types>{std::move(label), {}, 0};
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
        return m_announcements.observe(std::move(listener));
    }

    /// False, without effect, if there is no such step or a gesture is open.
    bool undo() {
        if (!canUndo()) {
            return false;
        }
        Step<Types>& step = *m_steps.last();
        if constexpr (requires(Operation & operation) { operation.prepare(m_model); }) {
            for (Operation& operation : step.operations) {
                operation.prepare(m_model);
            }
        }
        collect(step.operations);
        revert(step.operations, 0, step.operations.size());
        m_steps.reverted();
        m_announcements.announce();
        return true;
    }
    bool redo() {
        if (!canRedo()) {
            return false;
        }
        Step<Types>& step = *m_steps.next();
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
        m_steps.applied();
        ++m_revision;
        m_announcements.announce();
        return true;
    }
    [[nodiscard]] bool canUndo() const { return m_depth == 0 && m_steps.last() != nullptr; }
    [[nodiscard]] bool canRedo() const { return m_depth == 0 && m_steps.next() != nullptr; }
    /// The step that undo() or redo() would undo or redo; null if there is none. Valid until the
    /// next edit.
    [[nodiscard]] const Label* undoLabel() const {
        return canUndo() ? &m_steps.last()->label : nullptr;
    }
    [[nodiscard]] const Label* redoLabel() const {
        return canRedo() ? &m_steps.next()->label : nullptr;
    }

    /// Grows with every change of the model, undo included: equal numbers mean equal contents.
    [[nodiscard]] std::uint64_t revision() const { return m_revision; }
    /// Whether a gesture is open.
    [[nodiscard]] bool inGesture() const { return m_depth > 0; }
    /// How many of the steps are applied; the others can be redone.
    [[nodiscard]] std::size_t position() const { return m_steps.position(); }
    [[nodiscard]] std::size_t size() const { return m_steps.size(); }
    /// Approximate memory use of all steps.
    [[nodiscard]] std::size_t bytes() const { return m_steps.bytes(); }
    /// Drops all steps because the model's contents were replaced, and notifies listeners of
    /// `changes`. An open gesture ends with them; its operations are not reverted.
    void clear(Changes changes) {
        ++m_contents;
        ++m_revision;
        m_open.reset();
        m_depth = 0;
        m_steps.clear();
        m_announcements.replace(std::move(changes));
        m_announcements.announce();
    }

private:
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
            m_steps.add(std::move(*m_open));
        }
        --m_depth;
        return isStep;
    }
    void dropGesture(std::size_t mark) noexcept {
        try {
            // Listeners may know of these changes already, by Gesture::announce.
            for (std::size_t index = mark; index < m_open->operations.size(); ++index) {
                collect(m_open->operations[index]);
            }
        } catch (const std::exception&) {
            m_announcements.drop(); // out of memory: listeners cannot be notified
        }
        revert(m_open->operations, mark, m_open->operations.size());
        m_open->operations.erase(m_open->operations.begin() + static_cast<std::ptrdiff_t>(mark),
                                 m_open->operations.end());
        if (--m_depth > 0) {
            return;
        }
        try {
            m_announcements.announceIfAny();
        } catch (const std::exception&) {
            m_announcements.drop(); // out of memory: listeners cannot be notified
        }
    }
    void revert(std::vector<Operation>& operations, std::size_t from, std::size_t to) noexcept {
        ++m_revision;
        for (std::size_t index = to; index > from; --index) {
            operations[index - 1].revert(m_model);
        }
    }

    void collect(const Operation& operation) { m_announcements.collect(operation.changes()); }
    void collect(const std::vector<Operation>& operations) {
        for (const Operation& operation : operations) {
            collect(operation);
        }
    }

    Model& m_model;
    Steps<Types> m_steps;
    Announcements<typename Types::Change> m_announcements;
    std::optional<Step<Types>> m_open;
    int m_depth = 0;
    std::size_t m_contents = 0; ///< counts how often the model's contents were replaced
    std::uint64_t m_revision = 0;
};

} // namespace edit
