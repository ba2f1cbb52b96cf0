// What a control tells its window: the type, the sender and two numbers. Delivered synchronously,
// in the call that causes it.
#pragma once

#include <string>
#include <string_view>

namespace toolkit {

class CControlUI;

/// A button or option was pressed and released inside itself, or by Space or Enter.
inline constexpr std::u16string_view kClick = u"click";
/// A combo or list selected an item: any pick by the user, even of the item already shown, and a
/// SelectItem by the program that changes the index to a valid one. Never for "nothing selected".
inline constexpr std::u16string_view kItemSelect = u"itemselect";
/// A row of a list was double-clicked, or pressed in a list of rows that are like buttons, or Enter
/// was pressed with a row selected.
inline constexpr std::u16string_view kItemActivate = u"itemactivate";
/// The user changed an option's state; sent before its "click". A program's change is silent.
inline constexpr std::u16string_view kSelectChanged = u"selectchanged";
/// An edit lost the focus. Its handler runs before the next control is told that it has the focus.
inline constexpr std::u16string_view kKillFocus = u"killfocus";
/// The user changed an edit's text.
inline constexpr std::u16string_view kTextChanged = u"textchanged";
/// The user has moved a splitter: GetLength() is what is wanted now.
inline constexpr std::u16string_view kSplit = u"split";

struct TNotifyUI {
    std::u16string sType;
    CControlUI* pSender = nullptr; ///< not owned; valid for the whole delivery, even when removed
    int wParam = 0;                ///< itemselect, itemactivate: the index
    int lParam = 0;
};

} // namespace toolkit
