#include "toolkit/window/ToolTipWindow.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/Canvas.h"
#include "platform/Event.h"
#include "platform/FontSet.h"
#include "platform/Gui.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/PopupPlacement.h"

namespace toolkit {
namespace {

constexpr int kBelowPointer = 20;
constexpr int kMaxWidth = 800;
constexpr int kMaxLookNumber = 200;

/// Limits the tip's size, whatever a layout says.
void assignLimited(int& target, std::u16string_view value, int lowest) {
    target = std::clamp(parseInt(value).value_or(target), lowest, kMaxLookNumber);
}

} // namespace

/// The attributes of `<Default class="ToolTip">`.
struct ToolTipWindow::Look {
    SkinColor backColor = Tone::tip;
    SkinColor textColor = Tone::onTip;
    std::u16string backImage;
    int font = 0;
    int height = 24;
    int padding = 8;
    int cornerRadius = 3;

    static Look of(const CPaintManagerUI& manager);
};

ToolTipWindow::Look ToolTipWindow::Look::of(const CPaintManagerUI& manager) {
    using Text = std::u16string_view;
    static const AttributeTable<Look> attributes{
        {u"bkcolor", [](Look& l, Text v) { assignIf(l.backColor, parseSkinColor(v)); }},
        {u"textcolor", [](Look& l, Text v) { assignIf(l.textColor, parseSkinColor(v)); }},
        {u"bkimage", [](Look& l, Text v) { l.backImage = v; }},
        {u"font", [](Look& l, Text v) { assignIf(l.font, parseInt(v)); }},
        {u"height", [](Look& l, Text v) { assignLimited(l.height, v, 1); }},
        {u"textpadding", [](Look& l, Text v) { assignLimited(l.padding, v, 0); }},
        {u"cornerradius", [](Look& l, Text v) { assignLimited(l.cornerRadius, v, 0); }},
    };
    Look look;
    for (const auto& [name, value] : manager.look().GetDefaults(u"ToolTip")) {
        attributes.apply(look, name, value);
    }
    return look;
}

ToolTipWindow::~ToolTipWindow() = default;

bool ToolTipWindow::createNative() {
    if (m_native == nullptr && m_manager.GetWindow() != nullptr) {
        platform::WindowOptions options;
        options.className = u"ToolTip";
        options.kind = platform::WindowKind::popup;
        options.owner = m_manager.GetWindow();
        options.cornerRadius = Look::of(m_manager).cornerRadius;
        m_native = m_manager.Gui().windows().createWindow(options, *this);
    }
    return m_native != nullptr;
}

void ToolTipWindow::pointerAt(CControlUI* control, platform::Point at) {
    m_at = at;
    if (control == m_control) {
        return;
    }
    close();
    m_control = control;
    platform::NativeWindow* window = m_manager.GetWindow();
    if (control != nullptr && window != nullptr) {
        m_waiting = window->timers().start(kTimerId, kDelayMs);
    }
}

void ToolTipWindow::timeOver() {
    platform::NativeWindow* window = m_manager.GetWindow();
    if (!std::exchange(m_waiting, false) || window == nullptr) {
        return;
    }
    window->timers().stop(kTimerId);
    const std::u16string text =
        m_control != nullptr ? m_control->toolTipAt(m_at) : std::u16string();
    if (text.empty() || !createNative()) {
        return;
    }
    const Look look = Look::of(m_manager);
    const platform::FontHandle font = m_manager.look().GetFont(look.font);
    const int most = kMaxWidth - 2 * look.padding;
    const bool fits = fitsInto(most, text, font, m_manager.fonts());
    const int width = fits ? m_manager.fonts().measure(text, font).width : most;
    m_size = {width + 2 * look.padding, look.height};
    m_text = text;
    const platform::Point pointer = m_manager.toScreen(m_at);
    m_native->setGeometry(placeToolTip(pointer, kBelowPointer, m_size, window->workArea(pointer)));
    m_native->show(true);
    m_native->picture().invalidate(platform::Rect::at(0, 0, m_size.width, m_size.height));
}

void ToolTipWindow::close() {
    if (std::exchange(m_waiting, false) && m_manager.GetWindow() != nullptr) {
        m_manager.GetWindow()->timers().stop(kTimerId);
    }
    if (!m_text.empty()) {
        m_text.clear();
        m_native->show(false);
    }
}

void ToolTipWindow::hide() {
    close();
}

void ToolTipWindow::leave(const CControlUI& control) {
    if (m_control != nullptr && m_control->isInside(&control)) {
        close();
        m_control = nullptr;
    }
}

bool ToolTipWindow::onEvent(const platform::Event& event) {
    if (event.kind == platform::EventKind::mouseMove) {
        hide(); // the pointer reached the tip itself, which must not cover what is below
    }
    return false;
}

void ToolTipWindow::onPaint(platform::Canvas& canvas, const platform::Rect& /*dirty*/) {
    const Look look = Look::of(m_manager);
    const platform::Rect all = platform::Rect::at(0, 0, m_size.width, m_size.height);
    canvas.fillRect(all, m_manager.look().color(look.backColor));
    if (const SkinImage* image = m_manager.look().GetImage(look.backImage)) {
        image->draw(canvas, all);
    }
    TextLook text;
    text.font = m_manager.look().GetFont(look.font);
    text.color = m_manager.look().color(look.textColor);
    paintTextLine(canvas, m_manager.fonts(), m_text,
                  {look.padding, 0, m_size.width - look.padding, m_size.height}, text);
}

} // namespace toolkit
