// A control without a toolkit, for tests of what a window tells assistive technology.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Accessible.h"

namespace test {

class TestControl final : public platform::Accessible {
public:
    TestControl(platform::AccessibleRole role, std::u16string name, std::u16string id,
                platform::Rect rect)
        : m_role(role), m_name(std::move(name)), m_id(std::move(id)), m_rect(rect) {}

    TestControl& add(std::unique_ptr<TestControl> child) {
        child->m_parent = this;
        m_children.push_back(std::move(child));
        return *m_children.back();
    }
    void removeChildren() { m_children.clear(); }
    void rename(std::u16string name) { m_name = std::move(name); }

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override { return m_role; }
    [[nodiscard]] std::u16string accessibleName() const override { return m_name; }
    [[nodiscard]] std::u16string accessibleId() const override { return m_id; }
    [[nodiscard]] std::u16string accessibleValue() const override { return value; }
    [[nodiscard]] platform::AccessibleState accessibleState() const override { return state; }
    [[nodiscard]] platform::Rect accessibleRect() const override { return m_rect; }
    [[nodiscard]] Accessible* accessibleParent() const override { return m_parent; }
    [[nodiscard]] int accessibleChildCount() const override {
        return static_cast<int>(m_children.size());
    }
    [[nodiscard]] Accessible* accessibleChild(int index) const override {
        return m_children[static_cast<std::size_t>(index)].get();
    }
    void accessiblePress() override {
        ++presses;
        if (onPress) {
            onPress();
        }
    }
    void accessibleFocus() override { ++focuses; }
    [[nodiscard]] int accessibleCaret() const override { return caret; }
    void accessibleSetValue(const std::u16string& text) override { value = text; }

    std::u16string value;
    platform::AccessibleState state;
    int caret = -1;
    int presses = 0;
    std::function<void()> onPress;
    int focuses = 0;

private:
    platform::AccessibleRole m_role;
    std::u16string m_name;
    std::u16string m_id;
    platform::Rect m_rect;
    TestControl* m_parent = nullptr;
    std::vector<std::unique_ptr<TestControl>> m_children;
};

/// A dialog with a label, a button, a read-write edit, a combo, two radio buttons and a list of
/// rows, as the windows of the editor have them.
[[nodiscard]] std::unique_ptr<TestControl> makeTestDialog();

} // namespace test
