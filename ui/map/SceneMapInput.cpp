// How the map answers to the mouse and the keyboard.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <vector>

#include "toolkit/window/Notification.h"
#include "ui/map/SceneMap.h"

namespace ui {

using platform::Key;
using toolkit::EventType;

namespace {

constexpr int kSlack = 4;        ///< pixels until a press becomes a drag
constexpr int kDoubleSlack = 16; ///< between the presses of a double click

} // namespace

void SceneMap::pick(int branch) {
    if (branch >= 0 && branch != m_chosen) {
        choose(branch);
        notify(toolkit::kItemSelect, branch);
    }
}

bool SceneMap::claimsKey(const platform::Event& event) const {
    if (event.key == Key::escape && m_isPressed) {
        return true;
    }
    const bool isArrow = event.key == Key::left || event.key == Key::right ||
                         event.key == Key::up || event.key == Key::down;
    return !event.modifiers.control && !event.modifiers.alt &&
           (isArrow || event.key == Key::enter || event.key == Key::home);
}

/// To the nearest node in that direction, or along a chain that is folded.
void SceneMap::go(Key key) {
    const auto chainOf = [this](int branch) -> const std::vector<int>* {
        const auto index = static_cast<std::size_t>(branch);
        const int chain = index < layout().nodes.size() ? layout().nodes[index].chain : -1;
        return chain < 0 ? nullptr : &layout().chains[static_cast<std::size_t>(chain)];
    };
    const bool isBack = key == Key::left;
    const std::vector<int>* chain = chainOf(m_chosen);
    if (chain != nullptr && (isBack || key == Key::right)) {
        const auto place = std::find(chain->begin(), chain->end(), m_chosen);
        if (isBack ? place != chain->begin() : place + 1 != chain->end()) {
            pick(isBack ? *(place - 1) : *(place + 1));
            return;
        }
    }
    const Rect from = placeOf(m_chosen);
    int best = -1;
    int least = 0;
    for (int branch = 0; branch < static_cast<int>(layout().nodes.size()); ++branch) {
        const Rect to = placeOf(branch);
        const int right = to.left - from.left;
        const int down = to.top - from.top;
        const int ahead = key == Key::left    ? -right
                          : key == Key::right ? right
                          : key == Key::up    ? -down
                                              : down;
        const int aside = std::abs(key == Key::left || key == Key::right ? down : right);
        const int distance = ahead + 2 * aside;
        if (ahead > 0 && (best < 0 || distance < least)) {
            best = branch;
            least = distance;
        }
    }
    chain = best >= 0 ? chainOf(best) : nullptr;
    pick(chain == nullptr ? best : isBack ? chain->back() : chain->front());
}

bool SceneMap::key(const platform::Event& event) {
    if (!claimsKey(event)) {
        return false;
    }
    if (event.key == Key::escape) {
        forgetInput();
    } else if (event.key == Key::enter) {
        notify(toolkit::kItemActivate, m_chosen);
    } else if (m_chosen < 0 || event.key == Key::home) {
        pick(m_scene != nullptr ? std::max(m_scene->first, 0) : -1);
    } else {
        go(event.key);
    }
    return true;
}

void SceneMap::press(const platform::Event& event) {
    m_isPressed = true;
    m_isDragged = false;
    m_pressedAt = event.position;
    m_pressedView = m_view;
    const int branch = branchAt(event.position);
    m_linked = m_onLink ? actionAt(branch, event.position) : -1;
    m_pressed = branch;
    m_isPicked = branch >= 0 && branch != m_chosen;
    pick(branch);
    if (m_chosen != branch) { // it is gone
        m_linked = -1;
    }
}

/// Plays from the branch that the first press has met: its click may have moved the view.
void SceneMap::doublePress(Point point) {
    const bool isThere = std::abs(point.x - m_pressedAt.x) <= kDoubleSlack &&
                         std::abs(point.y - m_pressedAt.y) <= kDoubleSlack;
    if (isThere && m_pressed >= 0) {
        notify(toolkit::kItemActivate, m_pressed);
    }
}

/// A context menu is about the node that it is opened on.
bool SceneMap::notePress(const toolkit::TEventUI& event) {
    if (event.native.button == platform::MouseButton::right && !m_isPressed) {
        const int branch = branchAt(event.native.position);
        pick(branch);
        return branch >= 0 && m_chosen != branch; // the node of one that is gone has no menu
    }
    return false;
}

platform::PointerShape SceneMap::pointerShapeAt(Point point) const {
    using platform::PointerShape;
    const bool isDragged = m_isPressed && m_isDragged;
    if (isDragged && m_linked < 0) {
        return PointerShape::move;
    }
    const int branch = branchAt(point);
    if (isDragged || (m_onLink && actionAt(branch, point) >= 0)) {
        return PointerShape::link;
    }
    return branch >= 0 ? PointerShape::hand : PointerShape::arrow;
}

void SceneMap::forgetInput() {
    m_isPressed = m_isDragged = false;
    m_linked = -1;
    Invalidate();
}

void SceneMap::release(Point point) {
    const int target = branchAt(point);
    const int action = m_linked;
    const bool isInItsRow = target == m_chosen && actionAt(target, point) == action;
    const bool isLinked =
        m_isPressed && m_isDragged && action >= 0 && !isInItsRow && GetPos().contains(point);
    const bool isClick = m_isPressed && !m_isDragged;
    forgetInput();
    if (isLinked && m_onLink) {
        m_onLink(m_chosen, action, target);
    } else if (isClick && m_isPicked) {
        showNode(m_chosen);
    }
}

void SceneMap::drag(Point point) {
    const Point by{point.x - m_pressedAt.x, point.y - m_pressedAt.y};
    m_isDragged = m_isDragged || std::abs(by.x) > kSlack || std::abs(by.y) > kSlack;
    m_pointer = point;
    if (m_isDragged && m_linked >= 0) {
        Invalidate();
    } else if (m_isDragged) {
        m_view = {m_pressedView.x - by.x, m_pressedView.y - by.y};
        m_isFitted = false;
        Invalidate();
    }
}

/// A step a notch; parts of a notch add up.
void SceneMap::turnWheel(const platform::Event& event) {
    constexpr int kNotch = 120;
    m_turned += event.wheelDelta;
    setStep(m_step + m_turned / kNotch, event.position);
    m_turned %= kNotch;
}

bool SceneMap::DoEvent(const toolkit::TEventUI& event) {
    switch (event.Type) {
    case EventType::buttonDown:
        press(event.native);
        return true;
    case EventType::mouseMove:
        if (m_isPressed) {
            drag(event.native.position);
        }
        return true;
    case EventType::buttonUp:
        release(event.native.position);
        return true;
    case EventType::captureLost:
        forgetInput();
        return true;
    case EventType::doubleClick:
        doublePress(event.native.position);
        return true;
    case EventType::wheel:
        turnWheel(event.native);
        return true;
    case EventType::keyDown:
        return key(event.native);
    default:
        return CControlUI::DoEvent(event);
    }
}

} // namespace ui
