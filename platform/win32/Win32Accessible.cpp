#include "platform/win32/Win32Accessible.h"

#include <memory>

#include "platform/Guard.h"
#include "platform/win32/AccessibleNode.h"

namespace platform::win32 {

namespace {

DWORD eventOf(AccessibleChange change) {
    switch (change) {
    case AccessibleChange::focus:
        return EVENT_OBJECT_FOCUS;
    case AccessibleChange::name:
        return EVENT_OBJECT_NAMECHANGE;
    case AccessibleChange::value:
        return EVENT_OBJECT_VALUECHANGE;
    case AccessibleChange::state:
        return EVENT_OBJECT_STATECHANGE;
    case AccessibleChange::selection:
        return EVENT_OBJECT_SELECTIONWITHIN;
    case AccessibleChange::news:
        return EVENT_OBJECT_LIVEREGIONCHANGED;
    case AccessibleChange::alert:
        return EVENT_SYSTEM_ALERT;
    case AccessibleChange::children:
        break;
    }
    return EVENT_OBJECT_REORDER;
}

struct NodeRelease {
    void operator()(AccessibleNode* node) const { node->Release(); }
};

} // namespace

LRESULT answerAccessibility(HWND window, Accessible* root, WPARAM wide, LPARAM wideLong) {
    // The high half of the parameter carries no meaning and may be set.
    if (root == nullptr || static_cast<LONG>(wideLong) != OBJID_CLIENT) {
        return 0;
    }
    const std::unique_ptr<AccessibleNode, NodeRelease> object(
        AccessibleNode::create(window, nullptr));
    return LresultFromObject(__uuidof(IAccessible), wide, object.get());
}

void pressAccessible(long number) {
    if (Accessible* node = AccessibleNode::numbered(number)) {
        guardedRun("accessible action", [node] { node->accessiblePress(); });
    }
}

void tellAccessibility(HWND window, Accessible& node, AccessibleChange change) {
    NotifyWinEvent(eventOf(change), window, OBJID_CLIENT, AccessibleNode::numberOf(node));
}

} // namespace platform::win32
