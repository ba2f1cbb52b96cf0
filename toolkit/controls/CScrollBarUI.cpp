#include "toolkit/controls/CScrollBarUI.h"

#include "platform/Event.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {

void* CScrollBarUI::GetInterface(std::u16string_view name) {
    return name == u"ScrollBar" ? this : CControlUI::GetInterface(name);
}

bool CScrollBarUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!m_style.apply(name, value)) {
        return CControlUI::SetAttribute(name, value);
    }
    NeedUpdate();
    return true;
}

void CScrollBarUI::attach(CPaintManagerUI* manager, CControlUI* parent) {
    CControlUI::attach(manager, parent);
    if (manager != nullptr && !m_styled) {
        m_styled = true;
        manager->look().ApplyDefaults(*this);
    }
}

bool CScrollBarUI::DoEvent(const TEventUI& event) {
    switch (event.Type) {
    case EventType::buttonDown:
    case EventType::doubleClick:
        press(event.native.position);
        break;
    case EventType::mouseMove:
        if (m_dragging) {
            drag(event.native.position);
        }
        return true;
    case EventType::buttonUp:
    case EventType::captureLost:
        m_dragging = false;
        break;
    case EventType::mouseEnter:
        m_hot = true;
        break;
    case EventType::mouseLeave:
        m_hot = false;
        break;
    default:
        return CControlUI::DoEvent(event);
    }
    Invalidate();
    return true;
}

void CScrollBarUI::press(Point at) {
    const Rect thumb = m_model.thumb(GetPos());
    if (thumb.contains(at)) {
        m_dragging = true;
        m_grabOffset = at.y - thumb.top;
        return;
    }
    const int page = at.y < thumb.top ? -m_model.page() : m_model.page();
    if (m_model.setOffset(m_model.offset() + page) && m_onScroll) {
        m_onScroll();
    }
}

void CScrollBarUI::drag(Point at) {
    const int offset = m_model.offsetForThumb(GetPos(), at.y - m_grabOffset);
    if (m_model.setOffset(offset) && m_onScroll) {
        m_onScroll();
    }
}

void CScrollBarUI::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    m_style.paint(canvas, *GetManager(), GetPos(), m_model.thumb(GetPos()), m_hot, m_dragging);
}

} // namespace toolkit
