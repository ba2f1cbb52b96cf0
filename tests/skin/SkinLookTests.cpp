// The default skin in real windows: every state of a control is told by its picture.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "core/Text.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/CComboUI.h"
#include "toolkit/CEditUI.h"
#include "toolkit/COptionUI.h"
#include "toolkit/DropListWindow.h"
#include "toolkit/WindowImplBase.h"

namespace {

using platform::Bitmap;
using platform::Rect;

constexpr std::uint32_t kAccent = 0xFF1D63AD;
constexpr std::uint32_t kDarkAccent = 0xFF124274;

class SkinWindow final : public toolkit::WindowImplBase {
public:
    explicit SkinWindow(std::string file) : WindowImplBase(test::gui()), m_file(std::move(file)) {
        if (!Create(nullptr, u"Skin", 0x96C80000, 0x60000)) {
            throw std::runtime_error("no window for " + m_file);
        }
        test::WindowDriver(*this).show();
    }

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"SkinWindow"; }
    [[nodiscard]] std::string GetSkinFolder() const override { return SKIN_FOLDER; }
    [[nodiscard]] std::string GetSkinFile() const override { return m_file; }
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override {
        return className == u"Video" ? std::make_unique<toolkit::CControlUI>() : nullptr;
    }

private:
    std::string m_file;
};

/// Pixels of `rect` that differ, and are then of one of the colours, of any when none are given.
int changes(const Bitmap& before, const Bitmap& after, const Rect& rect,
            const std::set<std::uint32_t>& colors = {}) {
    int count = 0;
    for (int y = std::max(rect.top, 0); y < std::min(rect.bottom, after.size().height); ++y) {
        for (int x = std::max(rect.left, 0); x < std::min(rect.right, after.size().width); ++x) {
            const bool counts = colors.empty() || colors.contains(after.at(x, y));
            count += counts && before.at(x, y) != after.at(x, y) ? 1 : 0;
        }
    }
    return count;
}

class SkinLook : public testing::TestWithParam<const char*> {
protected:
    SkinLook() {
        collect(*m_driver.manager().GetRoot());
        // Nothing there shows the pointer: a corner of the caption.
        m_driver.hover(platform::Point{3, 3});
        m_rest = m_driver.picture();
    }
    /// How much of the control looks another way than at rest.
    int changesOf(const toolkit::CControlUI& control) {
        return changes(m_rest, m_driver.picture(), control.GetPos());
    }

    SkinWindow m_window{GetParam()};
    test::WindowDriver m_driver{m_window};
    Bitmap m_rest;
    /// What takes the keyboard, but for lists.
    std::vector<toolkit::CControlUI*> m_controls;

private:
    void collect(toolkit::CControlUI& control) {
        for (int i = 0; i < control.childCount(); ++i) {
            toolkit::CControlUI& child = *control.childAt(i);
            if (child.isFocusable() && child.GetClass() != u"List") {
                m_controls.push_back(&child);
            }
            collect(child);
        }
    }
};

TEST_P(SkinLook, TheKeyboardIsSeenOnEveryControl) {
    ASSERT_FALSE(m_controls.empty());
    for (std::size_t i = 0; i < m_controls.size(); ++i) {
        m_driver.press(platform::Key::tab);
        const toolkit::CControlUI* focus = m_driver.manager().GetFocus();
        ASSERT_NE(focus, nullptr);
        const Rect& pos = focus->GetPos();
        const Rect around{pos.left - 3, pos.top - 3, pos.right + 3, pos.bottom + 3};
        // A ring round the smallest of them, the 18 pixel box, has about 170 pixels.
        EXPECT_GT(changes(m_rest, m_driver.picture(), around, {kAccent, kDarkAccent}), 60)
            << core::storedText(focus->GetName());
    }
}

TEST_P(SkinLook, EveryStateOfAControlHasItsPicture) {
    for (toolkit::CControlUI* control : m_controls) {
        SCOPED_TRACE(core::storedText(control->GetName()));
        const auto* edit = toolkit::controlCast<toolkit::CEditUI>(control);
        if (edit != nullptr && edit->IsReadOnly()) {
            continue;
        }
        control->SetEnabled(false);
        EXPECT_GT(changesOf(*control), 20) << "disabled";
        control->SetEnabled(true);
        EXPECT_EQ(changesOf(*control), 0);
        auto* option = toolkit::controlCast<toolkit::COptionUI>(control);
        const bool isChosen = option != nullptr && option->IsSelected();
        if (option != nullptr) {
            option->Selected(!isChosen);
            EXPECT_GT(changesOf(*control), 60) << "checked";
            option->Selected(isChosen);
        }
        if (!isChosen || option->GetGroup().empty()) { // else nothing would happen
            m_driver.hover(test::WindowDriver::middleOf(*control));
            EXPECT_GT(changesOf(*control), 10) << "below the pointer";
            m_driver.hover(platform::Point{3, 3});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, SkinLook,
                         testing::Values("Confirmation.xml", "OpenScene.xml", "NewScene.xml",
                                         "BranchList.xml", "ZoneEdit.xml", "ZoneEditSmall.xml"),
                         [](const auto& layout) {
                             const std::string name = layout.param;
                             return name.substr(0, name.find('.'));
                         });

/// The first column of `rows` with a dark pixel, behind the first three columns.
int firstInk(const Bitmap& picture, const Rect& rows) {
    for (int x = rows.left + 3; x < rows.right; ++x) {
        for (int y = rows.top + 3; y < rows.bottom - 3; ++y) {
            if ((picture.at(x, y) & 0xFFU) < 0x80) {
                return x - rows.left;
            }
        }
    }
    return -1;
}

TEST(SkinDropList, TextsStandBelowTheTextOfTheBox) {
    SkinWindow window("BranchList.xml");
    test::WindowDriver driver(window);
    auto& combo = driver.get<toolkit::CComboUI>(u"ComboBranchName");
    combo.SetItemTexts(std::make_shared<toolkit::CComboUI::Texts>(2, u"Left"));
    combo.SelectItem(1);
    const int inBox = firstInk(driver.picture(), combo.GetPos());
    driver.openDropList(combo);
    toolkit::DropListWindow& list = driver.manager().dropList();
    ASSERT_NE(list.native(), nullptr);
    Rect row = list.itemRect(1);
    row.left = 0; // where the box begins
    EXPECT_EQ(firstInk(list.native()->snapshot(), row), inBox);
    EXPECT_EQ(list.geometry().left - driver.native().geometry().left, combo.GetPos().left);
}

} // namespace
