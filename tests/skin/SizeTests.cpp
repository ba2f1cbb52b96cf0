// The default skin in windows of every size, with the system's own fonts: nothing lies outside or
// over something else, and no text is cut.
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "tests/skin/SkinWindow.h"
#include "toolkit/controls/CLabelUI.h"

namespace {

using platform::Rect;
using platform::Size;
using toolkit::CControlUI;
using Controls = std::vector<CControlUI*>;

/// In layout pixels. The last one is a screen of 3840 x 2160 at 200 %.
constexpr Size kSizes[] = {{1239, 711}, {1240, 712}, {1279, 720}, {1280, 856},
                           {1366, 728}, {1600, 900}, {1920, 1080}};

/// Neighbours may share theirs.
constexpr int kBorder = 1;

std::string describe(const CControlUI& control) {
    const Rect& pos = control.GetPos();
    return core::storedText(control.GetClass()) + " " + core::storedText(control.GetName()) +
           " \"" + core::storedText(control.GetText()) + "\" at " + std::to_string(pos.left) + "," +
           std::to_string(pos.top) + " " + std::to_string(pos.width()) + "x" +
           std::to_string(pos.height());
}

/// What is shown and does something or says something, without the parts that it has itself.
void collectShown(CControlUI& control, Controls& found) {
    for (int i = 0; i < control.childCount(); ++i) {
        CControlUI& child = *control.childAt(i);
        if (!child.isShown()) {
            continue;
        }
        EXPECT_EQ(child.GetPos().intersected(control.GetPos()), child.GetPos()) << describe(child);
        if (child.takesMouse() && (child.isInteractive() || !child.GetText().empty())) {
            found.push_back(&child);
        }
        if (!child.isInteractive()) {
            collectShown(child, found);
        }
    }
}

void collectTexts(CControlUI& control, std::vector<toolkit::CLabelUI*>& found) {
    for (int i = 0; i < control.childCount(); ++i) {
        CControlUI& child = *control.childAt(i);
        if (!child.isShown() && child.GetName() == u"PaneLeft") {
            continue; // not in a window of this size
        }
        if (auto* text = dynamic_cast<toolkit::CLabelUI*>(&child)) {
            found.push_back(text);
        }
        collectTexts(child, found);
    }
}

class SkinSizes : public testing::TestWithParam<const char*> {
protected:
    void expectRoom() {
        CControlUI& root = *m_driver.manager().GetRoot();
        Controls shown;
        collectShown(root, shown);
        EXPECT_FALSE(shown.empty());
        for (std::size_t i = 0; i < shown.size(); ++i) {
            for (std::size_t j = i + 1; j < shown.size(); ++j) {
                const Rect both = shown[i]->GetPos().intersected(shown[j]->GetPos());
                EXPECT_TRUE(both.width() <= kBorder || both.height() <= kBorder)
                    << describe(*shown[i]) << " and " << describe(*shown[j]);
            }
        }
    }

    /// Of buttons that are shown at other times, too.
    void expectWholeTexts() {
        std::vector<toolkit::CLabelUI*> texts;
        collectTexts(*m_driver.manager().GetRoot(), texts);
        for (toolkit::CLabelUI* text : texts) {
            if (!text->IsVisible() && !text->isInteractive()) {
                continue;
            }
            const Controls hidden = show(*text);
            // Without a tool tip of its own, a text offers itself where its box cuts it.
            const std::u16string tip(text->GetToolTip());
            text->SetToolTip(u"");
            EXPECT_EQ(text->toolTipAt(text->GetPos().topLeft()), u"") << describe(*text);
            text->SetToolTip(tip);
            for (CControlUI* control : hidden) {
                control->SetVisible(false);
            }
        }
        m_driver.manager().UpdateLayout();
    }

    /// With all around it; what was hidden before.
    [[nodiscard]] Controls show(CControlUI& control) const {
        Controls hidden;
        for (CControlUI* part = &control; part != nullptr; part = part->GetParent()) {
            if (!part->isShown()) {
                hidden.push_back(part);
                part->SetVisible(true);
            }
        }
        m_driver.manager().UpdateLayout();
        return hidden;
    }

    test::SkinWindow m_window{std::string(GetParam()) + ".xml"};
    test::WindowDriver m_driver{m_window};
};

TEST_P(SkinSizes, HaveRoomForEverything) {
    const Size least = m_window.leastSize();
    const Size own = m_driver.manager().GetWindowSize();
    std::vector<Size> sizes{own};
    if (least != Size{}) {
        sizes.push_back(least);
        for (const Size size : kSizes) {
            if (size.width >= least.width && size.height >= least.height) {
                sizes.push_back(size);
            }
        }
    }
    for (const Size size : sizes) {
        SCOPED_TRACE(std::to_string(size.width) + " x " + std::to_string(size.height));
        test::resizeTo(m_window, size);
        expectRoom();
        expectWholeTexts();
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, SkinSizes,
                         testing::Values("Confirmation", "EarlierVersions", "OpenScene", "Keys",
                                         "Settings", "NewScene", "BranchList", "ZoneEdit",
                                         "ZoneEditSmall"),
                         [](const auto& layout) { return std::string(layout.param); });

} // namespace
