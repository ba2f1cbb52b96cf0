// Texts that do not fit into their boxes.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CLabelUI.h"

namespace test {

/// Without a tool tip of its own, a text offers itself where its box cuts it; otherwise empty.
inline std::u16string cutText(toolkit::CLabelUI& label) {
    const std::u16string tip(label.GetToolTip());
    label.SetToolTip(u"");
    std::u16string cut = label.toolTipAt(label.GetPos().topLeft());
    label.SetToolTip(tip);
    return cut;
}

/// No text shown in `control` is cut, except of what is named by the user and of whole sentences
/// beside buttons, which the strip cuts.
inline void expectNoneCut(toolkit::CControlUI& control) {
    if (!control.isShown()) {
        return;
    }
    if (auto* label = dynamic_cast<toolkit::CLabelUI*>(&control)) {
        EXPECT_EQ(core::storedText(cutText(*label)), "")
            << core::storedText(label->GetName()) << ", " << label->GetPos().width() << " wide";
    }
    for (int i = 0; i < control.childCount(); ++i) {
        expectNoneCut(*control.childAt(i));
    }
}

} // namespace test
