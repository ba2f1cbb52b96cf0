#include "ui/preview/PreviewRow.h"

#include <utility>

#include "toolkit/skin/Palette.h"
#include "toolkit/skin/RoundBox.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"

namespace ui {
namespace {

using platform::Color;
using platform::TextAlign;
using toolkit::Tone;

constexpr int kInset = 8;
constexpr int kBadgeSide = 16;
constexpr int kBadgeLeft = 9;
constexpr int kTextLeft = 34;
constexpr int kNumberLeft = 12;
constexpr int kPathTextLeft = 32;
constexpr int kTimeWidth = 60;
constexpr int kGap = 3;

} // namespace

PreviewRow::PreviewRow(PreviewRowLook look) : m_look(std::move(look)) {
    SetAttribute(u"icontint", u"badge");
    SetAttribute(u"iconpos", u"17,14"); // on the badge of a button
    SetIcon(m_look.icon);
}

void PreviewRow::show(PreviewRowLook look) {
    if (m_look != look) {
        m_look = std::move(look);
        SetIcon(m_look.icon);
        Invalidate();
    }
}

void PreviewRow::paintLine(platform::Canvas& canvas, std::u16string_view text, const Rect& box,
                           int font, Color color, TextAlign align) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.font = manager.look().GetFont(font);
    look.color = color;
    look.align = align;
    toolkit::paintTextLine(canvas, manager.fonts(), text, box, look);
}

void PreviewRow::paintBadge(platform::Canvas& canvas, const Rect& box) {
    const toolkit::Palette& colors = GetManager()->look().palette();
    toolkit::fillRoundBox(canvas, box, 3, colors[m_look.badgeTone]);
    if (m_look.icon.empty()) {
        paintLine(canvas, m_look.badge, box, font::kSmall, colors[Tone::onKind], TextAlign::center);
    } else {
        paintIcon(canvas);
    }
}

void PreviewRow::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    const toolkit::Palette& colors = GetManager()->look().palette();
    Rect box = GetPos();
    Color ink = colors[m_look.isProblem ? Tone::danger : Tone::ink];
    Color hint = colors[Tone::hint];
    int left = box.left + kPathTextLeft;
    if (m_look.isButton) {
        box = {box.left + kInset, box.top + kGap, box.right - kInset, box.bottom - kGap};
        toolkit::fillRoundBox(canvas, box, 3, colors[m_look.isChosen ? Tone::accent : Tone::edge]);
        toolkit::fillRoundBox(canvas, {box.left + 1, box.top + 1, box.right - 1, box.bottom - 1}, 2,
                              colors[m_look.isChosen ? Tone::selected : Tone::surface]);
        ink = m_look.isChosen ? colors[Tone::onSelected] : ink;
        hint = m_look.isChosen ? colors[Tone::onSelected] : hint;
        paintBadge(canvas,
                   Rect::at(box.left + kBadgeLeft, box.top + (box.height() - kBadgeSide) / 2,
                            kBadgeSide, kBadgeSide));
        left = box.left + kTextLeft;
    } else {
        paintLine(canvas, m_look.number,
                  {box.left + kNumberLeft, box.top + 3, left, box.top + box.height() / 2 + 2},
                  font::kHeading, ink, TextAlign::left);
    }
    const int right = box.right - kInset - (m_look.time.empty() ? 0 : kTimeWidth);
    const int middle = box.top + box.height() / 2;
    if (m_look.detail.empty()) {
        paintLine(canvas, m_look.name, {left, box.top, right, box.bottom}, font::kBody, ink,
                  TextAlign::left);
    } else {
        paintLine(canvas, m_look.name, {left, box.top + 3, right, middle + 2}, font::kBody, ink,
                  TextAlign::left);
        paintLine(canvas, m_look.detail, {left, middle, box.right - kInset, box.bottom - 2},
                  font::kSmall, hint, TextAlign::left);
    }
    paintLine(canvas, m_look.time, {right, box.top + 3, box.right - kInset, middle + 2},
              font::kSmall, hint, TextAlign::right);
}

} // namespace ui
