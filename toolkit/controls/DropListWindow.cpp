#include "toolkit/controls/DropListWindow.h"

#include <algorithm>
#include <utility>

#include "platform/Canvas.h"
#include "platform/Event.h"
#include "platform/Gui.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/PopupPlacement.h"

namespace toolkit {
namespace {

using platform::EventKind;
using platform::Point;
using platform::Rect;

constexpr int kBorder = 1;

} // namespace

DropListWindow::DropListWindow(CPaintManagerUI& manager) : m_manager(manager) {}

DropListWindow::~DropListWindow() = default;

DropListWindow& DropListWindow::of(CPaintManagerUI& manager) {
    return manager.popupOf<DropListWindow>();
}

CControlUI* DropListWindow::owner() const {
    return m_combo;
}

bool DropListWindow::key(const TEventUI& event) {
    return m_combo != nullptr && m_combo->DoEvent({event.Type, m_combo, event.native});
}

bool DropListWindow::createNative() {
    if (m_native == nullptr && m_manager.GetWindow() != nullptr) {
        platform::WindowOptions options;
        options.className = u"DropList";
        options.kind = platform::WindowKind::popup;
        options.owner = m_manager.GetWindow();
        m_native = m_manager.Gui().windows().createWindow(options, *this);
        for (const auto& [name, value] : m_manager.look().GetDefaults(u"ScrollBar")) {
            m_scrollStyle.apply(name, value);
        }
    }
    return m_native != nullptr;
}

bool DropListWindow::open(CComboUI& combo) {
    close();
    if (!createNative()) {
        return false;
    }
    m_combo = &combo;
    m_rowHeight = std::max(combo.itemStyle().height, 1);
    const Rect& pos = combo.GetPos();
    const platform::Size box = combo.GetDropBoxSize();
    // Whole rows only.
    const int rows =
        std::min(combo.GetCount(), std::max((box.height - 2 * kBorder) / m_rowHeight, 1));
    const platform::Size wanted{box.width > 0 ? box.width : pos.width(),
                                rows * m_rowHeight + 2 * kBorder};
    const Point corner = m_manager.toScreen(pos.topLeft());
    const Rect anchor = Rect::at(corner.x, corner.y, pos.width(), pos.height());
    const Rect place = placeDropList(anchor, wanted, m_manager.GetWindow()->workArea(corner));
    m_size = place.size();
    m_scroll.setExtent(combo.GetCount() * m_rowHeight, m_size.height - 2 * kBorder);
    m_scroll.setOffset(0);
    m_highlighted = -1;
    m_dragging = m_pressedInside = m_thumbHot = false;
    m_native->setGeometry(place);
    highlight(combo.GetCurSel());
    m_native->show(true);
    invalidate();
    return true;
}

void DropListWindow::close() {
    if (CComboUI* combo = std::exchange(m_combo, nullptr)) {
        m_dragging = false;
        if (m_native != nullptr) {
            m_native->input().releaseCapture();
            m_native->show(false);
        }
        combo->Invalidate();
    }
}

Rect DropListWindow::geometry() const {
    return m_combo != nullptr && m_native != nullptr ? m_native->geometry() : Rect{};
}

void DropListWindow::invalidate() {
    if (m_native != nullptr && m_combo != nullptr) {
        m_native->picture().invalidate(Rect::at(0, 0, m_size.width, m_size.height));
    }
}

void DropListWindow::highlight(int index) {
    m_highlighted = index;
    if (index >= 0) {
        m_scroll.reveal(index * m_rowHeight, (index + 1) * m_rowHeight);
    }
    invalidate();
}

int DropListWindow::pageRows() const {
    return std::max(m_scroll.page() / m_rowHeight, 1);
}

void DropListWindow::wheel(int delta) {
    if (m_scroll.turnWheel(delta, m_rowHeight)) {
        invalidate();
    }
}

Rect DropListWindow::rowsRect() const {
    const int bar = m_scroll.isNeeded() ? m_scrollStyle.width : 0;
    return {kBorder, kBorder, m_size.width - kBorder - bar, m_size.height - kBorder};
}

Rect DropListWindow::trackRect() const {
    const Rect rows = rowsRect();
    return {rows.right, rows.top, m_size.width - kBorder, rows.bottom};
}

Rect DropListWindow::itemRect(int index) const {
    const Rect rows = rowsRect();
    return Rect::at(rows.left, rows.top + index * m_rowHeight - m_scroll.offset(), rows.width(),
                    m_rowHeight);
}

int DropListWindow::itemAt(Point at) const {
    const Rect rows = rowsRect();
    if (m_combo == nullptr || !rows.contains(at)) {
        return -1;
    }
    const int index = (at.y - rows.top + m_scroll.offset()) / m_rowHeight;
    return index < m_combo->GetCount() ? index : -1;
}

void DropListWindow::dragOver(Point screen) {
    const Rect place = geometry();
    const int index = itemAt({screen.x - place.left, screen.y - place.top});
    if (index >= 0 && index != m_highlighted) {
        m_highlighted = index;
        invalidate();
    }
}

void DropListWindow::dropAt(Point screen) {
    const Rect place = geometry();
    pickHighlighted({screen.x - place.left, screen.y - place.top});
}

void DropListWindow::pickHighlighted(Point at) {
    const int index = itemAt(at);
    CComboUI* combo = m_combo;
    if (combo != nullptr && index >= 0 && combo->IsItemEnabled(index)) {
        close();
        combo->pick(index);
    }
}

bool DropListWindow::onEvent(const platform::Event& event) {
    if (m_combo == nullptr || !m_manager.takesInput()) {
        return false;
    }
    const CPaintManagerUI::Busy busy(&m_manager);
    return handle(event);
}

bool DropListWindow::handle(const platform::Event& event) {
    switch (event.kind) {
    case EventKind::appearanceChanged:
        invalidate();
        return true;
    case EventKind::mouseMove:
        follow(event.position);
        return true;
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick:
        m_pressedInside = event.button == platform::MouseButton::left;
        if (m_pressedInside && m_scroll.isNeeded() && trackRect().contains(event.position)) {
            pressTrack(event.position);
        }
        return true;
    case EventKind::mouseUp:
        m_native->input().releaseCapture();
        if (m_dragging) {
            m_dragging = false;
            invalidate();
        } else if (std::exchange(m_pressedInside, false)) {
            pickHighlighted(event.position);
        }
        return true;
    case EventKind::captureLost:
        m_dragging = m_pressedInside = false;
        return true;
    case EventKind::mouseWheel:
        wheel(event.wheelDelta);
        return true;
    case EventKind::keyDown:
    case EventKind::keyUp:
    case EventKind::textInput:
        // Keys belong to the window below; a system that sends them here means the combo.
        return m_manager.MessageHandler(event);
    default:
        return false;
    }
}

void DropListWindow::follow(Point at) {
    if (m_dragging) {
        m_scroll.setOffset(m_scroll.offsetForThumb(trackRect(), at.y - m_grabOffset));
        invalidate();
    } else if (const int index = itemAt(at); index >= 0 && index != m_highlighted) {
        m_highlighted = index;
        invalidate();
    }
}

void DropListWindow::pressTrack(Point at) {
    const Rect thumb = m_scroll.thumb(trackRect());
    m_pressedInside = false;
    if (thumb.contains(at)) {
        m_dragging = true;
        m_grabOffset = at.y - thumb.top;
        m_native->input().setCapture();
    } else {
        m_scroll.setOffset(m_scroll.offset() + (at.y < thumb.top ? -1 : 1) * m_scroll.page());
    }
    invalidate();
}

void DropListWindow::onPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    if (m_combo == nullptr) {
        return;
    }
    const ItemStyle& style = m_combo->itemStyle();
    canvas.fillRect(Rect::at(0, 0, m_size.width, m_size.height),
                    m_manager.look().color(m_combo->dropBorderColor()));
    canvas.fillRect({kBorder, kBorder, m_size.width - kBorder, m_size.height - kBorder},
                    m_manager.look().color(m_combo->dropBackColor()));
    if (m_scroll.isNeeded()) {
        m_scrollStyle.paint(canvas, m_manager, trackRect(), m_scroll.thumb(trackRect()), false,
                            m_dragging);
    }
    const platform::ClipScope scope(canvas, rowsRect());
    const int first = m_scroll.offset() / m_rowHeight;
    const int last =
        std::min(m_combo->GetCount() - 1, (m_scroll.offset() + m_scroll.page()) / m_rowHeight);
    for (int i = first; i <= last; ++i) {
        const ItemState state{m_combo->IsItemEnabled(i), i == m_combo->GetCurSel(),
                              i == m_highlighted};
        style.paintBackground(canvas, m_manager, itemRect(i), state);
        // The texts line up with the text of the box: the border does not count.
        const Rect rect = itemRect(i);
        style.paintText(canvas, m_manager, {rect.left - kBorder, rect.top, rect.right, rect.bottom},
                        m_combo->GetItemText(i), state);
    }
}

} // namespace toolkit
