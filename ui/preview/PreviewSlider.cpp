#include "ui/preview/PreviewSlider.h"

#include <algorithm>
#include <cstdint>

#include "core/Texts.h"
#include "platform/Geometry.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/RoundBox.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace ui {
namespace {

using platform::Key;
using toolkit::Tone;

constexpr int kBarHeight = 6;
constexpr int kHandleWidth = 7;
constexpr int kHandleHeight = 15;
constexpr double kRadius = 2;
constexpr int kPage = 25;

} // namespace

void PreviewSlider::show(int place, int count) {
    const int now = std::clamp(place, 0, std::max(count - 1, 0));
    if (now != m_place || count != m_count) {
        m_place = now;
        m_count = std::max(count, 0);
        m_isDragged = m_isDragged && m_count > 0; // without a place it hears of no release
        Invalidate();
    }
}

PreviewSlider::Rect PreviewSlider::bar() const {
    const Rect place = GetPos();
    const int top = place.top + (place.height() - kBarHeight) / 2;
    return {place.left, top, place.right, top + kBarHeight};
}

int PreviewSlider::handleAt() const {
    const int room = std::max(GetPos().width() - kHandleWidth, 0);
    return m_count < 2
               ? GetPos().left
               : GetPos().left + static_cast<int>(std::int64_t{room} * m_place / (m_count - 1));
}

void PreviewSlider::choose(int place) {
    const int wanted = std::clamp(place, 0, m_count - 1);
    if (wanted != m_place && m_choose) {
        show(wanted, m_count);
        m_choose(wanted);
        accessibleChanged(platform::AccessibleChange::value);
    }
}

void PreviewSlider::dragTo(int x) {
    const int room = std::max(GetPos().width() - kHandleWidth, 1);
    const std::int64_t offset =
        std::clamp<std::int64_t>(x - GetPos().left - kHandleWidth / 2, 0, room);
    choose(static_cast<int>((offset * (m_count - 1) + room / 2) / room));
}

bool PreviewSlider::claimsKey(const platform::Event& event) const {
    switch (event.key) {
    case Key::left:
    case Key::right:
    case Key::up:
    case Key::down:
    case Key::home:
    case Key::end:
    case Key::pageUp:
    case Key::pageDown:
        return !event.modifiers.control && !event.modifiers.alt;
    default:
        return false;
    }
}

bool PreviewSlider::DoEvent(const toolkit::TEventUI& event) {
    using toolkit::EventType;
    if (m_count < 1) {
        return CControlUI::DoEvent(event);
    }
    switch (event.Type) {
    case EventType::buttonDown:
    case EventType::doubleClick:
        m_isDragged = true;
        dragTo(event.native.position.x);
        return true;
    case EventType::mouseMove:
        if (m_isDragged) {
            dragTo(event.native.position.x);
        }
        return true;
    case EventType::buttonUp:
    case EventType::captureLost:
        m_isDragged = false;
        return true;
    case EventType::keyDown: {
        if (!claimsKey(event.native)) {
            break;
        }
        const Key key = event.native.key;
        const bool isBack = key == Key::left || key == Key::down || key == Key::pageDown;
        const int step = key == Key::pageUp || key == Key::pageDown ? kPage : 1;
        choose(key == Key::home  ? 0
               : key == Key::end ? m_count - 1
                                 : m_place + (isBack ? -step : step));
        return true;
    }
    default:
        break;
    }
    return CControlUI::DoEvent(event);
}

void PreviewSlider::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    const toolkit::Palette& colors = GetManager()->look().palette();
    const Rect whole = bar();
    toolkit::fillRoundBox(canvas, whole, kRadius, colors[Tone::rest]);
    if (m_count < 1) {
        return;
    }
    const int handle = handleAt();
    toolkit::fillRoundBox(canvas, {whole.left, whole.top, handle + kHandleWidth / 2, whole.bottom},
                          kRadius, colors[Tone::accent]);
    toolkit::fillRoundBox(canvas,
                          Rect::at(handle, GetPos().top + (GetPos().height() - kHandleHeight) / 2,
                                   kHandleWidth, kHandleHeight),
                          kRadius, colors[Tone::onSelected]);
}

std::u16string PreviewSlider::accessibleValue() const {
    return m_count < 1 ? std::u16string() : core::tr("PlaceOf|{0} of {1}"_tr, m_place + 1, m_count);
}

} // namespace ui
