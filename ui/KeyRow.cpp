#include "ui/KeyRow.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/FontSet.h"
#include "toolkit/skin/SkinImage.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace ui {

namespace {

constexpr int kFont = 4;
constexpr int kTextLeft = 124;
constexpr int kCapHeight = 18;
constexpr int kCapPadding = 6;
constexpr int kPlusGap = 3;
constexpr platform::Color kInk = 0xFF1C2733;
constexpr platform::Color kHint = 0xFF596675;
constexpr std::u16string_view kCapImage = u"file='KeyCap.png' corner='4,4,4,5'";

} // namespace

KeyRow::KeyRow(const KeyLine& line) : m_keys(keyText(line.chord)) {
    SetText(line.text);
}

std::u16string KeyRow::accessibleName() const {
    return m_keys + u": " + GetText();
}

int KeyRow::paintWords(platform::Canvas& canvas, std::u16string_view text, int left,
                       platform::Color color) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.font = manager.look().GetFont(kFont);
    look.color = color;
    Rect box = GetPos();
    box.left = left;
    toolkit::paintTextLine(canvas, manager.fonts(), text, box, look);
    return left + manager.fonts().measure(text, look.font).width;
}

int KeyRow::paintCap(platform::Canvas& canvas, std::u16string_view key, int left) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    const int width = manager.fonts().measure(key, manager.look().GetFont(kFont)).width;
    const int cap = std::max(width + 2 * kCapPadding, kCapHeight);
    const int top = GetPos().top + (GetPos().height() - kCapHeight) / 2;
    if (const auto* image = manager.look().GetImage(std::u16string(kCapImage))) {
        image->draw(canvas, Rect::at(left, top, cap, kCapHeight));
    }
    paintWords(canvas, key, left + (cap - width) / 2, kInk);
    return left + cap;
}

void KeyRow::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    int left = GetPos().left;
    std::u16string_view rest = m_keys;
    while (!rest.empty()) {
        const std::size_t end = rest.find(u'+');
        left = paintCap(canvas, rest.substr(0, end), left);
        rest = end == std::u16string_view::npos ? std::u16string_view() : rest.substr(end + 1);
        if (!rest.empty()) {
            left = paintWords(canvas, u"+", left + kPlusGap, kHint) + kPlusGap;
        }
    }
    paintWords(canvas, GetText(), GetPos().left + kTextLeft, kInk);
}

} // namespace ui
