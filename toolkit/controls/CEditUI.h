// A single-line edit. Enter commits: the edit gives up the focus, which sends "killfocus".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Accessible.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"
#include "toolkit/text/EditModel.h"

namespace toolkit {

class CEditUI : public CLabelUI {
public:
    CEditUI();

    [[nodiscard]] std::u16string GetClass() const override { return u"Edit"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    [[nodiscard]] std::u16string GetText() const override { return m_model.text(); }
    /// Replaces the text and forgets undo steps; silent. Control characters are dropped.
    void SetText(std::u16string_view text) override;
    void SetReadOnly(bool readOnly);
    [[nodiscard]] bool IsReadOnly() const { return m_readOnly; }
    /// Selects code units [begin, end), both cut to the text.
    void SetSel(int begin, int end);
    /// Begin and end of the selection; equal, the caret, when nothing is selected.
    [[nodiscard]] std::pair<int, int> GetSel() const;

    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const TEventUI& event) override;
    [[nodiscard]] Size EstimateSize(Size available) const override;
    void SetPos(const Rect& pos) override;
    /// Scrolls to the caret as well. Not called for a press, which must hit what it was aimed at.
    void reveal(CControlUI& descendant) override;
    void forgetInput() override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    [[nodiscard]] bool takesText() const override { return true; }
    /// Everything that types, moves the caret or edits. Undo only while something typed has not
    /// been committed by leaving the field.
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] std::u16string accessibleName() const override;
    [[nodiscard]] std::u16string accessibleValue() const override { return GetText(); }
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    [[nodiscard]] int accessibleCaret() const override;
    void accessibleSetValue(const std::u16string& text) override;
    [[nodiscard]] platform::PointerShape pointerShapeAt(Point /*point*/) const override {
        return platform::PointerShape::text;
    }

protected:
    void paintStatus(platform::Canvas& canvas) override;
    void paintText(platform::Canvas& canvas) override;
    [[nodiscard]] SkinColor currentTextColor() const override;

private:
    struct Attributes;
    bool onMouse(const TEventUI& event);
    bool onKey(const platform::Event& event);
    bool onEditingKey(const platform::Event& event);
    bool onShortcut(const platform::Event& event);
    void copySelection();
    void changed();
    void caretMoved();
    void tellInputMethod();
    /// The text as shown, including what the input method has not committed yet.
    [[nodiscard]] std::u16string shownText() const;
    /// Where each code unit of the shown text begins, and where the last ends.
    [[nodiscard]] std::vector<int> shownPositions() const;
    [[nodiscard]] std::size_t positionAt(Point point) const;
    [[nodiscard]] Rect caretRect() const;

    EditModel m_model;
    std::u16string m_takenText; ///< what the program set, or saw when the field was left last
    std::u16string m_preedit;
    std::u16string m_normalImage;
    std::u16string m_hotImage;
    std::u16string m_disabledImage;
    SkinColor m_readOnlyTextColor = Tone::muted;
    SkinColor m_selectionColor = Tone::selected;
    SkinColor m_caretColor = Tone::value;
    int m_scroll = 0; ///< pixels of text left of the visible part
    bool m_readOnly = false;
    bool m_hot = false;
    bool m_dragging = false;
};

} // namespace toolkit
