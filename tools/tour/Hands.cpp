#include "tools/tour/Hands.h"

#include <stdexcept>

#include "core/Text.h"
#include "platform/Accessible.h"
#include "platform/Event.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/WindowImplBase.h"
#include "tools/tour/Script.h"

namespace tour {

using platform::Accessible;
using platform::Key;

namespace {

constexpr std::u16string_view kActionList = u"BranchList";

std::runtime_error missing(const Target& target) {
    return std::runtime_error("no control " + core::storedText(target.name));
}

toolkit::CControlUI& controlOf(const Script& script, const Target& target) {
    return target.row < 0 ? script.get<toolkit::CControlUI>(target.name)
                          : script.inRow(target.row, target.name);
}

/// The first node with this id in a tree; null when there is none.
Accessible* find(Accessible& tree, std::u16string_view id) {
    if (tree.accessibleId() == id) {
        return &tree;
    }
    for (int i = 0; i < tree.accessibleChildCount(); ++i) {
        Accessible* child = tree.accessibleChild(i);
        if (Accessible* found = child != nullptr ? find(*child, id) : nullptr) {
            return found;
        }
    }
    return nullptr;
}

/// Row `number` of a list; null when there are not as many.
Accessible* rowOf(Accessible& list, int number) {
    for (int i = 0; i < list.accessibleChildCount(); ++i) {
        Accessible* child = list.accessibleChild(i);
        if (child != nullptr && child->accessibleRole() == platform::AccessibleRole::listItem &&
            number-- == 0) {
            return child;
        }
    }
    return nullptr;
}

/// As far as a screen reader may use it.
Accessible& nodeOf(const Script& script, const Target& target) {
    Accessible* node = script.top().GetPaintManager().GetRoot();
    if (target.row >= 0) {
        Accessible* list = find(*node, kActionList);
        node = list != nullptr ? rowOf(*list, target.row) : nullptr;
    }
    node = node != nullptr ? find(*node, target.name) : nullptr;
    if (node == nullptr || !node->accessibleState().enabled || !node->accessibleState().visible) {
        throw missing(target);
    }
    return *node;
}

} // namespace

void KeyHands::reach(Target target) {
    m_script.until(std::u16string(target.window),
                   [this, target] { return m_script.tabTo(controlOf(m_script, target)); });
}

void KeyHands::press(Target target) {
    reach(target);
    m_script.on(std::u16string(target.window), [this] { m_script.press(Key::space); });
}

void KeyHands::write(Target edit, const std::u16string& text) {
    reach(edit);
    m_script.on(std::u16string(edit.window), [this, text] {
        m_script.press(Key::a, {.control = true});
        m_script.type(text);
    });
}

void KeyHands::choose(Target combo, int item) {
    reach(combo);
    m_script.on(std::u16string(combo.window), [this, item] {
        m_script.press(Key::home);
        for (int i = 0; i < item; ++i) {
            m_script.press(Key::down);
        }
    });
}

void AccessibleHands::press(Target target) {
    m_script.on(std::u16string(target.window),
                [this, target] { nodeOf(m_script, target).accessiblePress(); });
}

void AccessibleHands::write(Target edit, const std::u16string& text) {
    m_script.on(std::u16string(edit.window), [this, edit, text] {
        Accessible& node = nodeOf(m_script, edit);
        node.accessibleFocus();
        node.accessibleSetValue(text);
    });
}

void AccessibleHands::choose(Target combo, int item) {
    press(combo); // opens it
    m_script.on(std::u16string(combo.window), [this, combo, item] {
        Accessible* child = nodeOf(m_script, combo).accessibleChild(item);
        if (child == nullptr) {
            throw missing(combo);
        }
        child->accessiblePress();
    });
}

} // namespace tour
