#include "tests/support/gui/TestControl.h"

#include "platform/Geometry.h"

namespace test {

namespace {

using platform::AccessibleRole;
using platform::Rect;

std::unique_ptr<TestControl> control(AccessibleRole role, const char16_t* name, const char16_t* id,
                                     const Rect& rect, bool focusable) {
    auto made = std::make_unique<TestControl>(role, name, id, rect);
    made->state.focusable = focusable;
    return made;
}

} // namespace

std::unique_ptr<TestControl> makeTestDialog() {
    auto root = control(AccessibleRole::dialog, u"Exit", u"Confirmation", {0, 0, 200, 100}, false);
    root->add(control(AccessibleRole::label, u"Save first?", u"Question", {5, 5, 95, 25}, false));
    root->add(control(AccessibleRole::button, u"Yes", u"ButtonYes", {10, 30, 60, 50}, true));
    auto& edit = root->add(
        control(AccessibleRole::edit, u"Branch name", u"EditBranchName", {70, 30, 150, 50}, true));
    edit.value = u"Start\u00e9";
    edit.caret = 3;
    auto& combo = root->add(
        control(AccessibleRole::comboBox, u"Zone", u"ComboZone", {70, 55, 150, 75}, true));
    combo.value = u"Door";
    combo.state.expandable = true;
    auto& option = root->add(control(AccessibleRole::radioButton, u"Move point", u"OptionMovePoint",
                                     {155, 30, 195, 50}, true));
    option.state.checkable = option.state.checked = true;
    auto& list =
        root->add(control(AccessibleRole::list, u"Actions", u"ListAction", {5, 80, 195, 98}, true));
    list.add(control(AccessibleRole::listItem, u"Row 1", u"", {5, 80, 195, 90}, false));
    auto& row = list.add(control(AccessibleRole::listItem, u"Row 2", u"", {5, 90, 195, 98}, false));
    row.state.selectable = row.state.selected = true;
    return root;
}

} // namespace test
