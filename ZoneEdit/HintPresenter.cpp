#include "ZoneEdit/HintPresenter.h"

#include <algorithm>
#include <cstddef>

#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "core/Texts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace zoneedit {
namespace {

constexpr int kNewsMs = 4000;
/// From this width on there is room for it beside the video's name.
constexpr int kWide = 1240;
constexpr core::Text kAtRest[] = {
    "Ctrl: scale, Ctrl + Shift: rotate"_tr, "Click: a point behind the chosen one"_tr,
    "Click: a point. Ctrl: rectangle"_tr, "Click a point to delete it"_tr};
constexpr int kMove = 0;
constexpr int kAddMany = 2;
constexpr int kVideoWidth = 176; ///< beside the hint; less where another language needs the room

/// Whether that changes anything.
bool setWidth(toolkit::CControlUI& control, int width) {
    const bool isOther = control.GetFixedWidth() != width;
    if (isOther) {
        control.SetFixedWidth(width);
    }
    return isOther;
}

} // namespace

void HintPresenter::showTool(int tool) {
    m_tool = tool;
    m_reason = {};
    show();
}

void HintPresenter::chooseTool(int tool) {
    startNews();
    showTool(tool);
}

void HintPresenter::allow(bool isAllowed) {
    m_isAllowed = isAllowed;
    place();
}

void HintPresenter::startNews() {
    m_isNews = true;
    m_timer.start(kNewsMs);
}

void HintPresenter::showHeld(platform::Modifiers held, bool isDragging) {
    if (held != m_held || isDragging != m_isDragging) {
        m_held = held;
        m_isDragging = isDragging;
        show();
    }
}

void HintPresenter::explain(core::Text reason) {
    if (!m_isAllowed) {
        m_notice.refuse(core::tr(reason));
        return;
    }
    m_reason = reason;
    startNews();
    show();
    if (toolkit::CControlUI* label = m_controls.find(kHintLabel)) {
        label->announce(false);
    }
}

bool HintPresenter::timeIsUp(unsigned timer) {
    const bool isUp = m_timer.isUp(timer);
    if (isUp) {
        m_reason = {};
        m_isNews = false;
        show();
    }
    return isUp;
}

core::Text HintPresenter::usual() const {
    if (m_tool == kAddMany && m_held.control) {
        return "Drag: a rectangle"_tr;
    }
    if (m_tool == kMove && m_held.control) {
        return m_held.shift ? "Drag: rotate about the centre"_tr
                            : "Drag: scale about the centre"_tr;
    }
    if (m_tool == kMove && m_held.shift && m_isDragging) {
        return "Straight across or down"_tr;
    }
    return kAtRest[static_cast<std::size_t>(m_tool)];
}

void HintPresenter::show() {
    m_controls.setText(kHintLabel, core::tr(m_reason.empty() ? usual() : m_reason));
    place();
}

void HintPresenter::place() {
    m_controls.setVisible(kHintLabel, m_isAllowed);
    toolkit::CControlUI* pane = m_controls.find(kHintPane);
    if (pane == nullptr) {
        return;
    }
    const bool isNarrow = m_controls.manager().GetWindowSize().width < kWide;
    const bool isHeld = m_held.control || m_held.shift;
    const bool takesPlace = isNarrow && m_isAllowed && (m_isNews || isHeld);
    m_controls.setVisible(kVideoLabel, !takesPlace);
    const int width = isNarrow && !takesPlace ? 1 : 0; // 0: the rest of the caption
    bool isMoved = setWidth(*pane, width);
    if (toolkit::CControlUI* video = m_controls.find(kVideoLabel); video != nullptr && !isNarrow) {
        isMoved = setWidth(*video, kVideoWidth) || isMoved;
    }
    if (toolkit::CControlUI* title = m_controls.find(kTitleLabel); title && !title->IsVisible()) {
        title->SetVisible(true);
        isMoved = true;
    }
    if (isMoved) {
        m_controls.manager().UpdateLayout();
    }
    if (m_isAllowed && (takesPlace || !isNarrow)) {
        makeRoom(isNarrow);
    }
}

void HintPresenter::makeRoom(bool isNarrow) {
    const toolkit::CControlUI* hint = m_controls.find(kHintLabel);
    auto* video = m_controls.find<toolkit::CLabelUI>(kVideoLabel);
    if (hint == nullptr || video == nullptr || hint->toolTipAt({}).empty()) {
        return; // it is not cut
    }
    if (isNarrow) {
        m_controls.setVisible(kTitleLabel, false);
    } else {
        setWidth(*video, std::min(kVideoWidth, video->textWidth()));
    }
    m_controls.manager().UpdateLayout();
}

} // namespace zoneedit
