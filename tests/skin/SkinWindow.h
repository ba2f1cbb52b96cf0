// A window of the default skin without the program behind it.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "platform/Geometry.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/WindowImplBase.h"
#include "ui/branch_editor/PaneHead.h"
#include "ui/preview/VideoPreview.h"
#include "ui/tour/TourControls.h"

namespace test {

class SkinWindow final : public toolkit::WindowImplBase {
public:
    explicit SkinWindow(std::string file) : WindowImplBase(gui()), m_file(std::move(file)) {
        if (!Create(nullptr, u"Skin", 0x96C80000, 0x60000)) {
            throw std::runtime_error("no window for " + m_file);
        }
        WindowDriver(*this).show();
    }

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"SkinWindow"; }
    [[nodiscard]] std::string GetSkinFolder() const override { return SKIN_FOLDER; }
    [[nodiscard]] std::string GetSkinFile() const override { return m_file; }
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override {
        if (className == u"PaneHead") {
            return std::make_unique<ui::PaneHead>();
        }
        if (className == u"TourPanel") {
            return std::make_unique<ui::TourPanel>();
        }
        if (className == u"VideoPreview") {
            return std::make_unique<ui::VideoPreview>();
        }
        return className == u"Video" || className == u"KeyTable" || className == u"SceneMap" ||
                       className == u"PreviewSlider" || className == u"Timeline" ||
                       className == u"Overview" || className == u"Loupe" ||
                       className == u"TourPointer"
                   ? std::make_unique<toolkit::CControlUI>()
                   : nullptr;
    }

private:
    std::string m_file;
};

/// Sizes the window, with all the panes that it has then; an empty size leaves it as it is.
inline void resizeTo(SkinWindow& window, platform::Size size) {
    const WindowDriver driver(window);
    if (size == platform::Size{} || size == driver.manager().GetWindowSize()) {
        return;
    }
    driver.native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
    ASSERT_TRUE(pumpUntil([&] { return driver.manager().GetWindowSize() == size; }));
    constexpr int kWithPane = 1240;
    for (const char16_t* pane : {u"PaneLeft", u"SplitterColumn", u"SpaceLeft", u"SpaceRight"}) {
        if (toolkit::CControlUI* control = driver.manager().FindControl(pane)) {
            control->SetVisible((control->GetName().starts_with(u"Space")) ==
                                (size.width < kWithPane));
        }
    }
    driver.manager().UpdateLayout();
}

} // namespace test
