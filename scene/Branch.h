// One node of a scene: a video and the ordered actions that choose what follows it. Owned by the
// BranchManager. One thread at a time: the main thread, or the one that reads a scene.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "scene/Action.h"

namespace scene {

class Branch {
public:
    /// Empty only when out of memory.
    [[nodiscard]] static std::shared_ptr<Branch> create();
    /// Empty, and logged, if an action cannot be created.
    [[nodiscard]] static std::shared_ptr<Branch> Load(const tinyxml2::XMLElement& element);

    /// The name that actions refer to; unique in the scene only by convention.
    [[nodiscard]] const std::string& ID() const { return m_id; }
    void SetID(const std::string& id) { m_id = id; }
    /// The video's name inside the scene's folder.
    [[nodiscard]] const std::string& Filename() const { return m_filename; }
    void SetFilename(const std::string& filename) { m_filename = filename; }

    [[nodiscard]] const std::vector<std::shared_ptr<Action>>& actions() { return m_actions; }
    [[nodiscard]] int actionCount() const { return static_cast<int>(m_actions.size()); }
    /// Empty if out of range.
    [[nodiscard]] std::shared_ptr<const Action> action(int index) const;
    [[nodiscard]] std::shared_ptr<Action> action(int index);
    /// The same, not shared: for a pass over all actions. Null if out of range; valid until the
    /// branch changes.
    [[nodiscard]] const Action* peekAction(int index) const;
    /// Appends; an empty pointer is ignored.
    void addAction(const std::shared_ptr<Action>& action);
    /// Inserts at `index`, which may be the end. An empty pointer or other index is ignored.
    void insertAction(int index, const std::shared_ptr<Action>& action);
    /// Later actions move up. An index out of range is ignored.
    void removeAction(int index);
    /// Moves the action at `from` so that it ends up at `to`. An index out of range is ignored.
    void moveAction(int from, int to);

    /// Writes the "Branch" element without escaping texts. Stops with false at the first failed
    /// write.
    [[nodiscard]] bool Write(core::File& file) const;
    [[nodiscard]] bool writeTo(LineSink& sink) const;

    // For edits and their undo: no copy that could fail.
    void swapID(std::string& id) noexcept { m_id.swap(id); }
    void swapFilename(std::string& filename) noexcept { m_filename.swap(filename); }

private:
    [[nodiscard]] bool hasAction(int index) const { return index >= 0 && index < actionCount(); }
    [[nodiscard]] bool loadChildren(const tinyxml2::XMLElement& element);

    std::string m_id;
    std::string m_filename;
    std::vector<std::shared_ptr<Action>> m_actions;
};

} // namespace scene
