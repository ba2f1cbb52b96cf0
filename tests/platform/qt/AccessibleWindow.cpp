// Shows a window with an accessibility tree until it is told to end. Its button changes the other
// controls; accessible_tree.py presses it over the accessibility bus and watches.
#include <cstdio>

#include "tests/support/gui/TestControl.h"
#include "tests/support/gui/TestGui.h"
#include "tests/support/gui/TestWindow.h"

using platform::AccessibleChange;
using test::TestControl;

namespace {

TestControl& childOf(const TestControl& parent, int index) {
    return static_cast<TestControl&>(*parent.accessibleChild(index));
}

void changeEverything(const TestControl& tree, platform::NativeWindow& window) {
    TestControl& label = childOf(tree, 0);
    label.rename(u"Saved");
    window.accessibleChanged(label, AccessibleChange::name);
    TestControl& edit = childOf(tree, 2);
    edit.value = u"Changed";
    window.accessibleChanged(edit, AccessibleChange::value);
    edit.state.focused = true;
    window.accessibleChanged(edit, AccessibleChange::focus);
    TestControl& option = childOf(tree, 4);
    option.state.checked = false;
    window.accessibleChanged(option, AccessibleChange::state);
    TestControl& list = childOf(tree, 5);
    list.removeChildren();
    window.accessibleChanged(list, AccessibleChange::children);
}

} // namespace

int main() {
    const auto tree = test::makeTestDialog();
    {
        test::TestWindow window;
        window.accessible = tree.get();
        window.native().setGeometry({40, 60, 240, 160});
        childOf(*tree, 1).onPress = [&] { changeEverything(*tree, window.native()); };
        window.show();
        test::gui().loop().run(); // SIGTERM ends it
    }
    test::endGui();
    const int presses = childOf(*tree, 1).presses;
    std::printf("presses %d\n", presses);
    return presses == 1 ? 0 : 1;
}
