// The controls of the action list's rows: what they are made of and what they offer. No more than
// that: what a row's change means is ActionPresenter's.
#pragma once

#include <memory>
#include <string_view>

#include "scene/Action.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/NameList.h"

namespace ui {

inline constexpr int kActionRowHeight = 33;

/// What the combos of all rows list. The names outlive it.
struct RowChoices {
    const NameList& conditions;
    const NameList& letters;
    const NameList& zones;
    const NameList& branches;

    /// What a parameter combo lists for a condition.
    [[nodiscard]] const NameList& parameters(int condition) const;
};

/// The row of action `number`, complete and not yet in a list.
[[nodiscard]] std::unique_ptr<toolkit::CControlUI>
makeActionRow(int number, const scene::Action& action, const RowChoices& choices);

// What a row made by makeActionRow shows.
void showAction(const toolkit::CControlUI& row, const scene::Action& action,
                const RowChoices& choices);
/// Chooses nothing in its parameter list.
void showNoParameter(const toolkit::CControlUI& row);
/// Frames the target box when the action names a branch that is not in the scene.
void markTarget(const toolkit::CControlUI& row, const scene::Action& action,
                const RowChoices& choices);
/// Makes it the row of action `number`.
void numberRow(const toolkit::CControlUI& row, int number);

/// Lists what goes with the condition and selects nothing.
void fillParameters(toolkit::CComboUI& combo, int condition, const RowChoices& choices);

/// The combo `name` of a row made by makeActionRow. Not owned.
[[nodiscard]] toolkit::CComboUI* rowCombo(const toolkit::CControlUI& row, std::u16string_view name);

/// The number of the action whose row `control` is part of, -1 for none.
[[nodiscard]] int rowNumber(const toolkit::CControlUI& control);

} // namespace ui
