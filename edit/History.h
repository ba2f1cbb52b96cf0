// The edits of one model: what was done, in named steps that can be taken back and done again, and
// who is told about it. Both editors' sessions are built on it: a session turns each named edit
// into operations and runs them here; nothing else changes the model. One thread only.
//
// A session describes itself by a struct of four types:
//   Model      what is edited; outlives the history, which alone changes it
//   Change     one part of the model that a listener may have to read again; comparable
//   Label      the name of a step and the place it happened at, for the view and its texts
//   Operation  one reversible change, a movable value:
//     void apply(Model&)              Does it, for the first time or again. The first time it may
//                                     throw before anything has changed; after that never.
//     void takeBack(Model&) noexcept  Brings back exactly what was before.
//     vector<Change> changes() const  What differs after either of the two; too much is allowed,
//                                     too little is not.
//     size_t bytes() const            Roughly what it holds in memory.
//     bool absorb(Operation& next)    Optional. `next` was applied right after this one in the same
//                                     gesture: take it over, so that one take-back undoes both, and
//                                     return true; or change neither and return false.
#pragma once

#include <algorithm>
#include <cassert>
#include <concepts>
#include <cstddef>
#include <deque>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "edit/Observers.h"

namespace edit {

/// How much a history keeps; the oldest steps go first.
struct Limits {
    std::size_t steps = 1000;
    std::size_t bytes = std::size_t{64} * 1024 * 1024;
    /// So many stay however large they are.
    std::size_t leastSteps = 10;
};

template <class Types>
concept EditTypes = std::movable<typename Types::Operation> &&
    std::movable<typename Types::Label> && std::equality_comparable<typename Types::Change> &&
    requires(typename Types::Operation operation, const typename Types::Operation constant,
             typename Types::Model& model) {
    operation.apply(model);
    { operation.takeBack(model) }
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

    /// One step in the making: everything from a press to the release, or from the first key to the
    /// last. Destroyed without commit, it takes everything back. One that begins while another is
    /// open becomes a part of that one and ends before it. Must not outlive the history.
    class Gesture {
    public:
        Gesture(Gesture&& other) noexcept
            : m_history(std::exchange(other.m_history, nullptr)), m_mark(other.m_mark) {}
        Gesture& operator=(Gesture&&) = delete;
        Gesture(const Gesture&) = delete;
        Gesture& operator=(const Gesture&) = delete;
        ~Gesture() { cancel(); }

        /// Applies the operation. Nothing has happened when it throws.
        void run(Operation operation) { m_history->run(std::move(operation), m_mark); }
        /// Tells the listeners what has changed so far, for gestures that last over
        /// several events.
        void announce() { m_history->announce(); }
        /// Ends the gesture. The outermost one becomes a step of the history unless it is empty.
        void commit() {
            const bool isStep = m_history->endGesture();
            History* history = std::exchange(m_history, nullptr);
            if (isStep) {
                history->announceAlways();
            }
        }
        /// Takes everything back and ends the gesture. Does nothing after a commit.
        void cancel() noexcept {
            if (History* history = std::exchange(m_history, nullptr)) {
                history->dropGesture(m_mark);
            }
        }

    private:
        friend class History;
        Gesture(History& history, std::size_t mark) : m_history(&history), m_mark(mark) {}

        History* m_history;
        std::size_t m_mark; ///< operations of the step that belong to the gestures around this one
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

    /// Told once at the end of each gesture, undo and redo, and by Gesture::announce; each change
    /// is named once. The list is empty when a step ended whose changes were announced before:
    /// then only undoLabel() and the like have changed. A listener may edit; redo is gone then.
    [[nodiscard]] Subscription observe(Listener listener) {
        return m_observers.add(std::move(listener));
    }

    /// False, and nothing happens, when there is no such step or a gesture is open.
    bool undo() {
        if (!canUndo()) {
            return false;
        }
        Step& step = m_steps[m_position - 1];
        collect(step.operations);
        takeBack(step.operations, 0);
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
        for (Operation& operation : step.operations) {
            operation.apply(m_model);
        }
        ++m_position;
        announceAlways();
        return true;
    }
    [[nodiscard]] bool canUndo() const { return m_depth == 0 && m_position > 0; }
    [[nodiscard]] bool canRedo() const { return m_depth == 0 && m_position < m_steps.size(); }
    /// The step that undo() or redo() would go over; null when there is none. Valid until the next
    /// edit.
    [[nodiscard]] const Label* undoLabel() const {
        return canUndo() ? &m_steps[m_position - 1].label : nullptr;
    }
    [[nodiscard]] const Label* redoLabel() const {
        return canRedo() ? &m_steps[m_position].label : nullptr;
    }

    /// Whether a gesture is open.
    [[nodiscard]] bool inGesture() const { return m_depth > 0; }
    /// How many of the steps held are done; the others can be redone.
    [[nodiscard]] std::size_t position() const { return m_position; }
    [[nodiscard]] std::size_t size() const { return m_steps.size(); }
    /// What all steps hold, roughly.
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }
    /// Forgets all steps, for a model whose contents were replaced, and tells the listeners
    /// `changes`. No gesture may be open.
    void clear(Changes changes) {
        assert(m_depth == 0);
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
        if constexpr (requires(Operation & next) { operations.back().absorb(next); }) {
            const std::size_t count = operations.size();
            if (count >= mark + 2 && operations[count - 2].absorb(operations.back())) {
                operations.pop_back();
            }
        }
    }
    /// Whether a step came of it.
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
        takeBack(m_open->operations, mark);
        m_open->operations.erase(m_open->operations.begin() + static_cast<std::ptrdiff_t>(mark),
                                 m_open->operations.end());
        if (--m_depth > 0) {
            return;
        }
        try {
            announce();
        } catch (const std::exception&) {
            m_changes.clear(); // listeners that cannot be told for want of memory
        }
    }
    void takeBack(std::vector<Operation>& operations, std::size_t from) noexcept {
        for (std::size_t index = operations.size(); index > from; --index) {
            operations[index - 1].takeBack(m_model);
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
        // Listeners may edit, and may destroy the history.
        const Changes changes = std::exchange(m_changes, {});
        m_observers.notify(changes);
    }

    Model& m_model;
    Limits m_limits;
    Observers<const Changes&> m_observers;
    std::deque<Step> m_steps;
    std::size_t m_position = 0;
    std::size_t m_bytes = 0;
    std::optional<Step> m_open;
    int m_depth = 0;
    Changes m_changes; ///< not announced yet
};

} // namespace edit
