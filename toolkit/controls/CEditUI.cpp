#include "toolkit/controls/CEditUI.h"

#include <algorithm>
#include <cstdlib>

#include "platform/Canvas.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/Window.h"
#include "toolkit/layout/AttributeTable.h"
#include "toolkit/layout/AttributeText.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace toolkit {
namespace {

constexpr int kCaretWidth = 1;

} // namespace

struct CEditUI::Attributes {
    static const AttributeTable<CEditUI>& table();
};

const AttributeTable<CEditUI>& CEditUI::Attributes::table() {
    using Text = std::u16string_view;
    static const AttributeTable<CEditUI> attributes{
        {u"readonly", [](CEditUI& c, Text v) { setIf(c, &CEditUI::SetReadOnly, parseBool(v)); }},
        {u"maxchar",
         [](CEditUI& c, Text v) {
             if (const auto most = parseInt(v)) {
                 c.m_model.setMaxLength(static_cast<std::size_t>(std::max(*most, 0)));
             }
         }},
        {u"normalimage", [](CEditUI& c, Text v) { c.m_normalImage = v; }},
        {u"hotimage", [](CEditUI& c, Text v) { c.m_hotImage = v; }},
        {u"disabledimage", [](CEditUI& c, Text v) { c.m_disabledImage = v; }},
        {u"readonlytextcolor",
         [](CEditUI& c, Text v) { assignIf(c.m_readOnlyTextColor, parseSkinColor(v)); }},
        {u"selectioncolor",
         [](CEditUI& c, Text v) { assignIf(c.m_selectionColor, parseSkinColor(v)); }},
        {u"caretcolor", [](CEditUI& c, Text v) { assignIf(c.m_caretColor, parseSkinColor(v)); }},
    };
    return attributes;
}

CEditUI::CEditUI() {
    SetTextPadding({5, 1, 5, 1});
}

void* CEditUI::GetInterface(std::u16string_view name) {
    return name == u"Edit" ? this : CLabelUI::GetInterface(name);
}

void CEditUI::SetText(std::u16string_view text) {
    m_model.setText(text);
    m_takenText = m_model.text();
    m_preedit.clear();
    m_scroll = 0;
    caretMoved();
    accessibleChanged(platform::AccessibleChange::value);
}

void CEditUI::SetReadOnly(bool readOnly) {
    m_readOnly = readOnly;
    m_preedit.clear();
    caretMoved();
}

void CEditUI::SetSel(int begin, int end) {
    m_model.select(static_cast<std::size_t>(std::max(begin, 0)),
                   static_cast<std::size_t>(std::max(end, 0)));
    caretMoved();
}

std::pair<int, int> CEditUI::GetSel() const {
    return {static_cast<int>(m_model.selectionBegin()), static_cast<int>(m_model.selectionEnd())};
}

bool CEditUI::SetAttribute(std::u16string_view name, std::u16string_view value) {
    if (!Attributes::table().apply(*this, name, value)) {
        return CLabelUI::SetAttribute(name, value);
    }
    NeedUpdate();
    return true;
}

platform::Size CEditUI::EstimateSize(Size available) const {
    return withImageHeight(CLabelUI::EstimateSize(available), m_normalImage);
}

void CEditUI::SetPos(const Rect& pos) {
    const bool moved = pos != GetPos();
    CLabelUI::SetPos(pos);
    if (moved) {
        caretMoved();
    }
}

std::u16string CEditUI::shownText() const {
    std::u16string text = m_model.text();
    text.insert(m_model.caret(), m_preedit);
    return text;
}

std::vector<int> CEditUI::shownPositions() const {
    const CPaintManagerUI& manager = *GetManager();
    return manager.fonts().caretPositions(shownText(), manager.look().GetFont(GetFont()));
}

std::size_t CEditUI::positionAt(Point point) const {
    const std::vector<int> positions = shownPositions();
    const int x = point.x - textRect().left + m_scroll;
    std::size_t best = 0;
    for (std::size_t i = 1; i < positions.size() && i <= m_model.text().size(); ++i) {
        if (std::abs(positions[i] - x) < std::abs(positions[best] - x)) {
            best = i;
        }
    }
    return best;
}

platform::Rect CEditUI::caretRect() const {
    const std::vector<int> positions = shownPositions();
    const std::size_t caret = m_model.caret() + m_preedit.size();
    const CPaintManagerUI& manager = *GetManager();
    const Rect text = textRect();
    const int height =
        std::min(manager.fonts().lineHeight(manager.look().GetFont(GetFont())), text.height());
    const int x = caret < positions.size() ? positions[caret] : 0;
    return Rect::at(text.left + x - m_scroll, text.top + (text.height() - height) / 2, kCaretWidth,
                    height);
}

/// Keeps the caret in view and the input method's window beside it. An edit without
/// the focus shows its beginning.
void CEditUI::caretMoved() {
    Invalidate();
    if (!IsFocused()) {
        return;
    }
    const int width = textRect().width();
    if (width <= 0) {
        return;
    }
    const int caret = caretRect().left - textRect().left + m_scroll;
    const int total = shownPositions().back();
    m_scroll = std::min(m_scroll, std::max(0, total + kCaretWidth - width));
    m_scroll = std::min(m_scroll, caret);
    m_scroll = std::max(m_scroll, caret + kCaretWidth - width);
    tellInputMethod();
}

void CEditUI::tellInputMethod() {
    if (IsFocused() && GetManager()->GetWindow() != nullptr) {
        GetManager()->GetWindow()->input().setTextInput(!m_readOnly, caretRect());
    }
}

void CEditUI::reveal(CControlUI& descendant) {
    caretMoved();
    CLabelUI::reveal(descendant);
}

void CEditUI::paintStatus(platform::Canvas& canvas) {
    if ((!IsEnabled() || m_readOnly) && drawImage(canvas, m_disabledImage)) {
        return;
    }
    if (!(m_hot && drawImage(canvas, m_hotImage))) {
        drawImage(canvas, m_normalImage);
    }
}

SkinColor CEditUI::currentTextColor() const {
    return IsEnabled() && m_readOnly ? m_readOnlyTextColor : CLabelUI::currentTextColor();
}

void CEditUI::paintText(platform::Canvas& canvas) {
    const Rect box = textRect().intersected(canvas.clip());
    if (box.isEmpty()) {
        return;
    }
    const platform::ClipScope scope(canvas, box);
    const CPaintManagerUI& manager = *GetManager();
    if (m_readOnly && !IsFocused()) { // nobody writes on: what is too long ends as in a label
        paintTextLine(
            canvas, manager.fonts(), shownText(), textRect(),
            {.font = manager.look().GetFont(GetFont()), .color = paletteColor(currentTextColor())});
        return;
    }
    const std::vector<int> positions = shownPositions();
    const Rect caret = caretRect();
    const int origin = textRect().left - m_scroll;
    if (m_model.hasSelection() && IsFocused() && m_preedit.empty()) {
        canvas.fillRect({origin + positions[m_model.selectionBegin()], caret.top,
                         origin + positions[m_model.selectionEnd()], caret.bottom},
                        paletteColor(m_selectionColor));
    }
    const Rect line{origin, textRect().top, origin + positions.back() + 1, textRect().bottom};
    canvas.drawText(shownText(), line, manager.look().GetFont(GetFont()),
                    paletteColor(currentTextColor()), platform::TextAlign::left);
    if (!m_preedit.empty()) {
        canvas.fillRect(
            {origin + positions[m_model.caret()], caret.bottom - 1, caret.left, caret.bottom},
            paletteColor(m_caretColor));
    }
    if (IsFocused() && !m_readOnly) {
        canvas.fillRect(caret, paletteColor(m_caretColor));
    }
}

platform::AccessibleRole CEditUI::accessibleRole() const {
    return platform::AccessibleRole::edit;
}

std::u16string CEditUI::accessibleName() const {
    return givenName();
}

platform::AccessibleState CEditUI::accessibleState() const {
    platform::AccessibleState state = CLabelUI::accessibleState();
    state.readOnly = m_readOnly;
    return state;
}

int CEditUI::accessibleCaret() const {
    return static_cast<int>(m_model.caret());
}

} // namespace toolkit
