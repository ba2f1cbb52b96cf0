// The list of keys: groups with a heading in three columns, of which the arrow keys choose a row,
// and a scroll bar when they do not fit. Enter or a double click on a row sends "itemactivate"; the
// row can then wait for a key. UI thread only.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "platform/Event.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/input/TEventUI.h"
#include "ui/keys/KeyList.h"
#include "ui/keys/KeyRow.h"

namespace ui {

class KeyTable final : public toolkit::CContainerUI {
public:
    KeyTable();

    /// Called with each key while a row waits for one.
    void setOnKey(std::function<void(const KeyChord&)> onKey) { m_onKey = std::move(onKey); }
    /// The chosen row stays chosen while its command is shown.
    void show(const std::vector<KeyGroup>& groups);
    /// Null when none is chosen. Not owned; until the next show.
    [[nodiscard]] KeyRow* chosen() const { return m_chosen; }
    void pick(KeyRow& row, bool activates);
    /// The chosen row waits until a key is taken, or the table is left.
    void setWaiting(bool waiting);
    [[nodiscard]] bool isWaiting() const { return m_chosen != nullptr && m_chosen->isWaiting(); }
    [[nodiscard]] const KeyStyle& style() const { return m_style; }

    [[nodiscard]] std::u16string GetClass() const override { return u"KeyTable"; }
    void RemoveAll() override;
    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    bool DoEvent(const toolkit::TEventUI& event) override;
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    [[nodiscard]] int childCount() const override { return CContainerUI::childCount() + 1; }
    [[nodiscard]] CControlUI* childAt(int index) const override;
    [[nodiscard]] CControlUI* controlAt(Point point, toolkit::Meeting kind) override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;

protected:
    void layoutChildren(const Rect& content) override;

private:
    /// The texts of a column begin in one line.
    void alignTexts();
    void addGroup(const KeyGroup& group);
    void choose(KeyRow* row);
    bool onKey(const platform::Event& event);
    /// The row that a key leads to from the chosen one; null when it leads nowhere.
    [[nodiscard]] KeyRow* target(platform::Key key) const;
    /// The row nearest to the chosen one's height, `columns` further.
    [[nodiscard]] KeyRow* beside(int columns) const;
    [[nodiscard]] KeyRow* below(int pixels) const;

    KeyStyle m_style;
    std::unique_ptr<toolkit::CScrollBarUI> m_scrollBar;
    std::vector<KeyRow*> m_rows; ///< column by column; not owned
    std::array<int, 3> m_tops{}; ///< where the next group of each column begins
    KeyRow* m_chosen = nullptr;
    bool m_reveals = false; ///< the next layout scrolls to the chosen row
    bool m_isOther = false; ///< the last key was none that has a name
    int m_headingFont = 0;
    std::u16string m_ruleColor; ///< of the line below a heading
    std::function<void(const KeyChord&)> m_onKey;
};

} // namespace ui
