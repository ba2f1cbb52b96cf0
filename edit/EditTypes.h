// What a session tells its history about its edits: a struct of four types.
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

#include <concepts> // IWYU pragma: keep
#include <cstddef>
#include <vector>

namespace edit {

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

} // namespace edit
