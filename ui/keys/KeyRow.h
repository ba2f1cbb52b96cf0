// A row of the list of keys: caps, and what the key does; or a note. UI thread only.
#pragma once

#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/ItemStyle.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/SkinColor.h"
#include "ui/keys/KeyList.h"

namespace ui {

class KeyTable;

struct KeyStyle {
    toolkit::ItemStyle item;
    toolkit::SkinColor textColor = toolkit::Tone::ink;
    toolkit::SkinColor hintColor = toolkit::Tone::hint;
    toolkit::SkinColor refusedColor = toolkit::Tone::danger;
    toolkit::SkinColor capColor = toolkit::Tone::surface;
    toolkit::SkinColor capEdgeColor = toolkit::Tone::edge;
    toolkit::SkinColor chosenEdgeColor =
        toolkit::Tone::accent; ///< of keys that the author has chosen
    int font = 0;
};

class KeyRow final : public toolkit::CControlUI {
public:
    /// The table owns the row.
    KeyRow(KeyTable& table, const KeyLine& line);

    [[nodiscard]] const KeyLine& line() const { return m_line; }
    /// Of the table's row that it acts on.
    void setSelected(bool selected);
    /// Waits for a key, which is shown in place of the caps.
    void setWaiting(bool waiting);
    [[nodiscard]] bool isWaiting() const { return m_isWaiting; }
    /// Says why a key was refused.
    void refuse(const std::u16string& why);

    [[nodiscard]] std::u16string GetClass() const override { return u"KeyRow"; }
    bool notePress(const toolkit::TEventUI& event) override;
    bool DoEvent(const toolkit::TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    void forgetInput() override { m_isHot = false; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    /// "Ctrl+S: Save".
    [[nodiscard]] std::u16string accessibleName() const override;
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    void accessiblePress() override;

    /// How much room the caps need, from the row's left edge to the text.
    [[nodiscard]] int keysWidth() const;
    /// Where the text begins at the latest, if it is not to be cut.
    [[nodiscard]] int lastTextLeft() const;
    /// Where the text begins, from the row's left edge.
    void setTextLeft(int left) { m_textLeft = left; }

private:
    [[nodiscard]] int capWidth(std::u16string_view key) const;
    [[nodiscard]] int widthOf(std::u16string_view text) const;
    /// Each draws at `left` and returns where it ends.
    int paintKeys(platform::Canvas& canvas, int left) const;
    int paintCap(platform::Canvas& canvas, std::u16string_view key, int left) const;
    int paintWords(platform::Canvas& canvas, std::u16string_view text, int left,
                   const toolkit::SkinColor& color) const;
    [[nodiscard]] const KeyStyle& style() const;

    KeyTable& m_table;
    KeyLine m_line;
    std::u16string m_refusal;
    int m_textLeft = 0;
    bool m_isSelected = false;
    bool m_isWaiting = false;
    bool m_isHot = false;
};

} // namespace ui
