#include "ui/preview/PreviewRow.h"

#include <utility>

#include "platform/Geometry.h"
#include "platform/Path.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace ui {
namespace {

using platform::Color;
using platform::TextAlign;

constexpr int kInset = 8;
constexpr int kBadgeSide = 16;
constexpr int kBadgeLeft = 9;
constexpr int kTextLeft = 34;
constexpr int kNumberLeft = 12;
constexpr int kPathTextLeft = 32;
constexpr int kTimeWidth = 60;
constexpr int kSmallFont = 4;
constexpr int kBoldFont = 1;
constexpr int kGap = 3;
constexpr Color kInk = 0xFF1C2733;
constexpr Color kHint = 0xFF596675;
constexpr Color kEdge = 0xFF7C8A9A;
constexpr Color kAccent = 0xFF1D63AD;
constexpr Color kSelected = 0xFFC1E3FF;
constexpr Color kOnSelected = 0xFF124274;
constexpr Color kDanger = 0xFFA8221B;
constexpr Color kWhite = 0xFFFFFFFF;

void fillRound(platform::Canvas& canvas, const platform::Rect& box, double radius, Color color) {
    platform::Path path;
    path.addRoundBox({static_cast<double>(box.left), static_cast<double>(box.top)}, box.width(),
                     box.height(), radius);
    canvas.fillPath(path, color);
}

} // namespace

PreviewRow::PreviewRow(PreviewRowLook look) : m_look(std::move(look)) {
    SetAttribute(u"icontint", u"primary");
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
    fillRound(canvas, box, 3, m_look.badgeColor);
    if (m_look.icon.empty()) {
        paintLine(canvas, m_look.badge, box, kSmallFont, kWhite, TextAlign::center);
    } else {
        paintIcon(canvas);
    }
}

void PreviewRow::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    Rect box = GetPos();
    Color ink = m_look.isProblem ? kDanger : kInk;
    Color hint = kHint;
    int left = box.left + kPathTextLeft;
    if (m_look.isButton) {
        box = {box.left + kInset, box.top + kGap, box.right - kInset, box.bottom - kGap};
        fillRound(canvas, box, 3, m_look.isChosen ? kAccent : kEdge);
        fillRound(canvas, {box.left + 1, box.top + 1, box.right - 1, box.bottom - 1}, 2,
                  m_look.isChosen ? kSelected : kWhite);
        ink = m_look.isChosen ? kOnSelected : ink;
        hint = m_look.isChosen ? kOnSelected : hint;
        paintBadge(canvas,
                   Rect::at(box.left + kBadgeLeft, box.top + (box.height() - kBadgeSide) / 2,
                            kBadgeSide, kBadgeSide));
        left = box.left + kTextLeft;
    } else {
        paintLine(canvas, m_look.number,
                  {box.left + kNumberLeft, box.top + 3, left, box.top + box.height() / 2 + 2},
                  kBoldFont, ink, TextAlign::left);
    }
    const int right = box.right - kInset - (m_look.time.empty() ? 0 : kTimeWidth);
    const int middle = box.top + box.height() / 2;
    if (m_look.detail.empty()) {
        paintLine(canvas, m_look.name, {left, box.top, right, box.bottom}, 0, ink, TextAlign::left);
    } else {
        paintLine(canvas, m_look.name, {left, box.top + 3, right, middle + 2}, 0, ink,
                  TextAlign::left);
        paintLine(canvas, m_look.detail, {left, middle, box.right - kInset, box.bottom - 2},
                  kSmallFont, hint, TextAlign::left);
    }
    paintLine(canvas, m_look.time, {right, box.top + 3, box.right - kInset, middle + 2}, kSmallFont,
              hint, TextAlign::right);
}

} // namespace ui
