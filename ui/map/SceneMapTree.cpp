// The map for assistive technology: a tree with the branches, and below each its actions.
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Accessible.h"
#include "platform/Geometry.h"
#include "ui/map/SceneMap.h"

namespace ui {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

} // namespace

class SceneMap::Item final : public platform::Accessible {
public:
    /// `parent` null: a branch.
    Item(SceneMap& map, int branch, Item* parent = nullptr, int action = -1)
        : m_map(map), m_parent(parent), m_branch(branch), m_action(action) {
        if (parent == nullptr) {
            m_actions.resize(m_map.m_scene->branches[at(branch)].actions.size());
        }
    }

    [[nodiscard]] int branch() const { return m_branch; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::treeItem;
    }
    [[nodiscard]] std::u16string accessibleName() const override {
        return m_parent == nullptr ? m_map.textOf(m_branch) : m_map.textOf(m_branch, m_action);
    }
    [[nodiscard]] std::u16string accessibleId() const override { return {}; }
    [[nodiscard]] std::u16string accessibleValue() const override { return {}; }
    [[nodiscard]] platform::AccessibleState accessibleState() const override {
        const platform::AccessibleState around = m_map.accessibleState();
        platform::AccessibleState state;
        state.enabled = around.enabled;
        state.visible = around.visible;
        state.selectable = m_parent == nullptr;
        state.selected = m_parent == nullptr && m_branch == m_map.m_chosen;
        return state;
    }
    [[nodiscard]] platform::Rect accessibleRect() const override {
        Rect place = m_map.placeOf(m_branch);
        const int row = map::sizesOf(m_map.form()).row;
        if (m_parent != nullptr && row > 0 && m_action < map::kMostRows) {
            const double middle = map::exitOf(m_map.form(), m_action);
            const int top = place.top + static_cast<int>((middle - row / 2.0) * m_map.scale());
            place = {place.left, top, place.right, top + static_cast<int>(row * m_map.scale())};
        }
        return place;
    }
    [[nodiscard]] Accessible* accessibleParent() const override {
        return m_parent != nullptr ? static_cast<Accessible*>(m_parent) : &m_map;
    }
    [[nodiscard]] int accessibleChildCount() const override {
        return static_cast<int>(m_actions.size());
    }
    [[nodiscard]] Accessible* accessibleChild(int index) const override {
        if (index < 0 || index >= accessibleChildCount()) {
            return nullptr;
        }
        std::unique_ptr<Item>& item = m_actions[at(index)];
        if (item == nullptr) {
            item = std::make_unique<Item>(m_map, m_branch, const_cast<Item*>(this), index);
        }
        return item.get();
    }
    [[nodiscard]] Accessible* accessibleFocused() override { return nullptr; }
    void accessiblePress() override {
        if (m_map.accessibleState().enabled && m_map.accessibleState().visible) {
            m_map.pick(m_branch);
        }
    }
    void accessibleFocus() override { m_map.accessibleFocus(); }
    [[nodiscard]] int accessibleCaret() const override { return -1; }

private:
    SceneMap& m_map;
    Item* m_parent;
    int m_branch;
    int m_action;
    mutable std::vector<std::unique_ptr<Item>> m_actions; ///< made when asked for
};

int SceneMap::accessibleChildCount() const {
    return m_scene != nullptr ? static_cast<int>(m_scene->branches.size()) : 0;
}

platform::Accessible* SceneMap::accessibleChild(int index) const {
    if (index < 0 || index >= accessibleChildCount()) {
        return nullptr;
    }
    m_items.resize(at(accessibleChildCount()));
    std::shared_ptr<Item>& item = m_items[at(index)];
    if (item == nullptr) {
        item = std::make_shared<Item>(const_cast<SceneMap&>(*this), index);
    }
    return item.get();
}

int SceneMap::accessibleIndexOf(const platform::Accessible& child) const {
    const auto* item = dynamic_cast<const Item*>(&child);
    return item != nullptr ? item->branch() : -1;
}

std::u16string SceneMap::accessibleValue() const {
    return m_chosen >= 0 && m_chosen < accessibleChildCount() ? textOf(m_chosen) : std::u16string();
}

std::u16string SceneMap::textOf(int branch) const {
    const map::MapBranch& content = m_scene->branches[at(branch)];
    std::u16string text = core::displayText(content.name);
    if (branch == m_scene->first) {
        text += u", " + core::tr("MapFirst|first branch"_tr);
    }
    text += u", " + core::tr("{0} action|{0} actions"_trn, content.actions.size());
    const int errors = m_errors ? m_errors(branch) : 0;
    if (errors > 0) {
        text += u", " + core::tr("{0} error|{0} errors"_trn, at(errors));
    }
    return text;
}

std::u16string SceneMap::textOf(int branch, int action) const {
    const map::MapAction& content = m_scene->branches[at(branch)].actions[at(action)];
    std::u16string text = core::displayText(content.text);
    if (!content.target.empty()) {
        text += u", " + core::tr("MapTo|to {0}"_tr, content.target);
        text += content.branch < 0 ? u", " + core::tr("MapMissing|missing"_tr) : std::u16string();
    }
    return content.immediate ? text + u", " + core::tr("MapImmediate|immediate"_tr) : text;
}

} // namespace ui
