// The default skin in real windows: every state of a control is told by its picture.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
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
    explicit SkinWindow(std::string file) : WindowImplBase(test::gui()), m_file(std::move(file)) {}

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"SkinWindow"; }
    [[nodiscard]] std::string GetSkinFolder() const override { return SKIN_FOLDER; }
    [[nodiscard]] std::string GetSkinFile() const override { return m_file; }
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override {
        return className == u"Video" ? std::make_unique<toolkit::CControlUI>() : nullptr;
    }

private:
    std::string m_file;
};

class SkinLook : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        m_window = std::make_unique<SkinWindow>(GetParam());
        ASSERT_TRUE(m_window->Create(nullptr, u"Skin", 0x96C80000, 0x60000));
        m_driver = std::make_unique<test::WindowDriver>(*m_window);
        m_driver->show();
        collect(*m_driver->manager().GetRoot());
        ASSERT_FALSE(m_controls.empty());
    }
    void TearDown() override {
        m_driver.reset();
        m_window.reset();
    }

    /// Puts the pointer on nothing that shows it: a corner of the caption.
    Bitmap pictureAtRest() {
        m_driver->hover(platform::Point{3, 3});
        return m_driver->picture();
    }

    std::unique_ptr<SkinWindow> m_window;
    std::unique_ptr<test::WindowDriver> m_driver;
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

/// Pixels of `rect` that differ, and are then of a colour that `counts` accepts.
template <class Counts>
int changes(const Bitmap& before, const Bitmap& after, const Rect& rect, const Counts& counts) {
    int count = 0;
    for (int y = std::max(rect.top, 0); y < std::min(rect.bottom, after.size().height); ++y) {
        for (int x = std::max(rect.left, 0); x < std::min(rect.right, after.size().width); ++x) {
            if (before.at(x, y) != after.at(x, y) && counts(after.at(x, y))) {
                ++count;
            }
        }
    }
    return count;
}

int changes(const Bitmap& before, const Bitmap& after, const Rect& rect) {
    return changes(before, after, rect, [](std::uint32_t) { return true; });
}

TEST_P(SkinLook, TheKeyboardIsSeenOnEveryControl) {
    const Bitmap rest = pictureAtRest();
    for (std::size_t i = 0; i < m_controls.size(); ++i) {
        m_driver->press(platform::Key::tab);
        const toolkit::CControlUI* focus = m_driver->manager().GetFocus();
        ASSERT_NE(focus, nullptr);
        const Rect& pos = focus->GetPos();
        const Rect around{pos.left - 3, pos.top - 3, pos.right + 3, pos.bottom + 3};
        // A ring round the smallest of them, the 18 pixel box, has about 170 pixels.
        EXPECT_GT(changes(rest, m_driver->picture(), around,
                          [](std::uint32_t c) { return c == kAccent || c == kDarkAccent; }),
                  60)
            << core::storedText(focus->GetName());
    }
}

TEST_P(SkinLook, ThePointerIsSeenOnEveryControl) {
    const Bitmap rest = pictureAtRest();
    for (toolkit::CControlUI* control : m_controls) {
        const auto* edit = toolkit::controlCast<toolkit::CEditUI>(control);
        const auto* option = toolkit::controlCast<toolkit::COptionUI>(control);
        if ((edit != nullptr && edit->IsReadOnly()) ||
            (option != nullptr && option->IsSelected() && !option->GetGroup().empty())) {
            continue; // nothing would happen
        }
        m_driver->hover(test::WindowDriver::middleOf(*control));
        EXPECT_GT(changes(rest, m_driver->picture(), control->GetPos()), 10)
            << core::storedText(control->GetName());
    }
}

TEST_P(SkinLook, ADisabledControlLooksIt) {
    const Bitmap rest = pictureAtRest();
    for (toolkit::CControlUI* control : m_controls) {
        const auto* edit = toolkit::controlCast<toolkit::CEditUI>(control);
        if (edit != nullptr && edit->IsReadOnly()) {
            continue;
        }
        control->SetEnabled(false);
        EXPECT_GT(changes(rest, m_driver->picture(), control->GetPos()), 20)
            << core::storedText(control->GetName());
        control->SetEnabled(true);
        EXPECT_EQ(changes(rest, m_driver->picture(), control->GetPos()), 0)
            << core::storedText(control->GetName());
    }
}

class SkinBoxes : public SkinLook {};

TEST_P(SkinBoxes, ACheckedOneLooksIt) {
    int boxes = 0;
    for (toolkit::CControlUI* control : m_controls) {
        if (auto* option = toolkit::controlCast<toolkit::COptionUI>(control)) {
            const Bitmap before = pictureAtRest();
            const bool wasSelected = option->IsSelected();
            option->Selected(!wasSelected);
            EXPECT_GT(changes(before, m_driver->picture(), control->GetPos()), 60)
                << core::storedText(control->GetName());
            option->Selected(wasSelected);
            ++boxes;
        }
    }
    EXPECT_GT(boxes, 0);
}

std::string layoutName(const testing::TestParamInfo<const char*>& layout) {
    const std::string name = layout.param;
    return name.substr(0, name.find('.'));
}

INSTANTIATE_TEST_SUITE_P(Layouts, SkinLook,
                         testing::Values("Confirmation.xml", "OpenScene.xml", "NewScene.xml",
                                         "BranchList.xml", "ZoneEdit.xml", "ZoneEditSmall.xml"),
                         layoutName);
INSTANTIATE_TEST_SUITE_P(Layouts, SkinBoxes,
                         testing::Values("BranchList.xml", "ZoneEdit.xml", "ZoneEditSmall.xml"),
                         layoutName);

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
    ASSERT_TRUE(window.Create(nullptr, u"Skin", 0x96C80000, 0x60000));
    test::WindowDriver driver(window);
    driver.show();
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
