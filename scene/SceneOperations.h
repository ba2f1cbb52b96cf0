// The reversible changes of a scene. SceneSession creates them with valid numbers and final names;
// here they are applied and reverted. Most swap their contents with the scene's, so that reverting
// is the same as applying again. Used by this module's sources only.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "edit/OneOf.h"
#include "scene/Action.h"
#include "scene/Branch.h"
#include "scene/BranchManager.h"
#include "scene/SceneChange.h"
#include "scene/SceneManager.h"

namespace scene {

using SceneChanges = std::vector<SceneChange>;

struct SwapFirstBranch {
    std::string name;

    void apply(SceneManager& scene) noexcept { scene.swapFirstBranch(name); }
    void revert(SceneManager& scene) noexcept { apply(scene); }
    [[nodiscard]] SceneChanges changes() const { return {{SceneChange::Part::firstBranch, -1}}; }
    [[nodiscard]] std::size_t bytes() const { return sizeof(*this) + name.capacity(); }
};

struct SwapName {
    int branch;
    std::string name;

    void apply(SceneManager& scene) noexcept { scene.branches()->branch(branch)->swapID(name); }
    void revert(SceneManager& scene) noexcept { apply(scene); }
    [[nodiscard]] SceneChanges changes() const { return {{SceneChange::Part::branchName, branch}}; }
    [[nodiscard]] std::size_t bytes() const { return sizeof(*this) + name.capacity(); }
};

struct SwapVideo {
    int branch;
    std::string name;

    void apply(SceneManager& scene) noexcept {
        scene.branches()->branch(branch)->swapFilename(name);
    }
    void revert(SceneManager& scene) noexcept { apply(scene); }
    [[nodiscard]] SceneChanges changes() const { return {{SceneChange::Part::video, branch}}; }
    [[nodiscard]] std::size_t bytes() const { return sizeof(*this) + name.capacity(); }
};

/// Replaces the list of added videos.
struct SwapAddedVideos {
    std::vector<std::string> names;

    void apply(SceneManager& scene) noexcept { scene.swapAddedVideos(names); }
    void revert(SceneManager& scene) noexcept { apply(scene); }
    [[nodiscard]] static SceneChanges changes() { return {{SceneChange::Part::addedVideos, -1}}; }
    [[nodiscard]] std::size_t bytes() const;
};

/// Replaces all that the file holds but the scene's name.
struct SwapContents {
    std::string firstBranch;
    std::vector<std::shared_ptr<Branch>> branches;

    void apply(SceneManager& scene) noexcept {
        scene.swapFirstBranch(firstBranch);
        scene.branches()->swapBranches(branches);
    }
    void revert(SceneManager& scene) noexcept { apply(scene); }
    [[nodiscard]] static SceneChanges changes() { return {{SceneChange::Part::scene, -1}}; }
    [[nodiscard]] std::size_t bytes() const;
};

/// Inserts a branch, or removes an existing one.
struct PlaceBranch {
    int index;
    std::shared_ptr<Branch> branch;
    bool isRemoval;

    void apply(SceneManager& scene) { place(scene, !isRemoval); }
    void revert(SceneManager& scene) noexcept { place(scene, isRemoval); }
    [[nodiscard]] static SceneChanges changes() { return {{SceneChange::Part::branches, -1}}; }
    [[nodiscard]] std::size_t bytes() const;

private:
    void place(SceneManager& scene, bool in) const;
};

struct MoveBranch {
    int from;
    int to;

    void apply(SceneManager& scene) const noexcept { scene.branches()->moveBranch(from, to); }
    void revert(SceneManager& scene) const noexcept { scene.branches()->moveBranch(to, from); }
    [[nodiscard]] static SceneChanges changes() { return {{SceneChange::Part::branches, -1}}; }
    [[nodiscard]] static std::size_t bytes() { return sizeof(MoveBranch); }
};

/// Inserts an action, or removes an existing one.
struct PlaceAction {
    int branch;
    int index;
    std::shared_ptr<Action> action;
    bool isRemoval;

    void apply(SceneManager& scene) { place(scene, !isRemoval); }
    void revert(SceneManager& scene) noexcept { place(scene, isRemoval); }
    [[nodiscard]] SceneChanges changes() const { return {{SceneChange::Part::actions, branch}}; }
    [[nodiscard]] std::size_t bytes() const;

private:
    void place(SceneManager& scene, bool in) const;
};

struct MoveAction {
    int branch;
    int from;
    int to;

    void apply(SceneManager& scene) const noexcept {
        scene.branches()->branch(branch)->moveAction(from, to);
    }
    void revert(SceneManager& scene) const noexcept {
        scene.branches()->branch(branch)->moveAction(to, from);
    }
    [[nodiscard]] SceneChanges changes() const { return {{SceneChange::Part::actions, branch}}; }
    [[nodiscard]] static std::size_t bytes() { return sizeof(MoveAction); }
};

/// Replaces the contents of actions: one operation for them all because a scene may have very many.
struct SwapActions {
    struct One {
        int branch;
        int index;
        Action contents;
    };
    std::vector<One> actions; ///< not empty

    void apply(SceneManager& scene) noexcept;
    void revert(SceneManager& scene) noexcept { apply(scene); }
    [[nodiscard]] SceneChanges changes() const;
    [[nodiscard]] std::size_t bytes() const;
};

using SceneOperation =
    edit::OneOf<SceneManager, SceneChange, SwapFirstBranch, SwapName, SwapVideo, SwapAddedVideos,
                SwapContents, PlaceBranch, MoveBranch, PlaceAction, MoveAction, SwapActions>;

} // namespace scene
