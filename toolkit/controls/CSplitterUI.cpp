#include "toolkit/controls/CSplitterUI.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/Text.h"
#include "platform/Canvas.h"
#include "platform/Event.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/window/Notification.h"

namespace toolkit {
namespace {

using platform::Key;

constexpr int kStep = 16;
constexpr CControlUI::Size kGrip{3, 32};

} // namespace

void* CSplitterUI::GetInterface(std::u16string_view name) {
    return name == u"Splitter" ? this : CControlUI::GetInterface(name);
}

bool CSplitterUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    const bool isHot = name == u"hotgripcolor";
    if (!isHot && name != u"gripcolor") {
        return CControlUI::SetAttribute(name, value);
    }
    assignIf(isHot ? m_hotGripColor : m_gripColor, parseSkinColor(value));
    Invalidate();
    return true;
}

bool CSplitterUI::isUpright() const {
    return dynamic_cast<const CHorizontalLayoutUI*>(GetParent()) != nullptr;
}

int CSplitterUI::along(Size size) const {
    return isUpright() ? size.width : size.height;
}

int CSplitterUI::along(Point point) const {
    return isUpright() ? point.x : point.y;
}

CControlUI* CSplitterUI::neighbour(bool behind) const {
    const CControlUI* row = GetParent();
    CControlUI* found = nullptr;
    bool isPast = false;
    for (int i = 0; row != nullptr && i < row->childCount(); ++i) {
        CControlUI* child = row->childAt(i);
        if (child == this) {
            isPast = true;
        } else if (child->isShown() && (behind ? isPast && found == nullptr : !isPast)) {
            found = child;
        }
    }
    return found;
}

int CSplitterUI::length() const {
    const CControlUI* behind = neighbour(true);
    return behind != nullptr ? along(behind->GetPos().size()) : 0;
}

int CSplitterUI::least() const {
    const CControlUI* behind = neighbour(true);
    return behind != nullptr ? along(behind->limited({})) : 0;
}

/// A smaller window takes from the neighbour in front first, then from the one behind. Without the
/// bar that one is as the layout has it.
void CSplitterUI::beforeLayout(Size content) {
    const CControlUI* front = neighbour(false);
    CControlUI* behind = neighbour(true);
    if (m_wanted == 0 || front == nullptr || behind == nullptr) {
        return;
    }
    m_usual = m_usual == 0 ? along(behind->GetFixedSize()) : m_usual;
    const int room = along(content) - along(GetFixedSize()) - along(front->limited({}));
    const int length = isShown() ? std::max(std::min(m_wanted, room), least()) : m_usual;
    if (along(behind->GetFixedSize()) != length) {
        isUpright() ? behind->SetFixedWidth(length) : behind->SetFixedHeight(length);
    }
}

void CSplitterUI::SetLength(int length) {
    m_wanted = std::max(length, 0);
    NeedUpdate();
}

void CSplitterUI::choose(int length) {
    const int room = this->length() + along(neighbour(false)->GetPos().size()) -
                     along(neighbour(false)->limited({}));
    SetLength(std::max(std::min(length, room), least()));
    accessibleChanged(platform::AccessibleChange::value);
}

void CSplitterUI::toggle() {
    const int now = length();
    if (now > least()) {
        m_last = now;
        choose(least());
    } else if (m_last > 0) {
        choose(m_last);
    }
    notify(kSplit);
}

bool CSplitterUI::claimsKey(const platform::Event& event) const {
    const bool isArrow = isUpright() ? event.key == Key::left || event.key == Key::right
                                     : event.key == Key::up || event.key == Key::down;
    return !event.modifiers.control && !event.modifiers.alt && (isArrow || event.key == Key::enter);
}

bool CSplitterUI::key(const platform::Event& event) {
    if (!claimsKey(event)) {
        return false;
    }
    if (event.key == Key::enter) {
        toggle();
    } else {
        const bool isLonger = event.key == Key::left || event.key == Key::up;
        choose(length() + (isLonger ? kStep : -kStep));
        notify(kSplit);
    }
    return true;
}

bool CSplitterUI::DoEvent(const TEventUI& event) {
    if (neighbour(true) == nullptr || neighbour(false) == nullptr) {
        return CControlUI::DoEvent(event);
    }
    switch (event.Type) {
    case EventType::buttonDown:
        m_isDragged = true;
        m_grabbed = length() + along(event.native.position);
        return true;
    case EventType::mouseMove:
        if (m_isDragged) {
            choose(m_grabbed - along(event.native.position));
        }
        return m_isDragged;
    case EventType::buttonUp:
    case EventType::captureLost:
        if (std::exchange(m_isDragged, false)) {
            notify(kSplit);
        }
        return true;
    case EventType::doubleClick:
        toggle();
        return true;
    case EventType::keyDown:
        return key(event.native);
    case EventType::mouseEnter:
    case EventType::mouseLeave:
        m_isHot = event.Type == EventType::mouseEnter;
        Invalidate();
        return true;
    default:
        return CControlUI::DoEvent(event);
    }
}

platform::PointerShape CSplitterUI::pointerShapeAt(Point /*point*/) const {
    return isUpright() ? platform::PointerShape::sizeAcross : platform::PointerShape::sizeDown;
}

std::u16string CSplitterUI::accessibleValue() const {
    return core::displayText(std::to_string(length()));
}

void CSplitterUI::paintStatus(platform::Canvas& canvas) {
    const Size grip = isUpright() ? kGrip : Size{kGrip.height, kGrip.width};
    if (IsEnabled()) {
        canvas.fillRect(GetPos().centred(grip),
                        paletteColor(m_isHot ? m_hotGripColor : m_gripColor));
    }
}

} // namespace toolkit
