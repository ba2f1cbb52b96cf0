#include "tests/screenshots/BranchEditorShots.h"

#include <memory>
#include <string>
#include <string_view>

#include "core/Text.h"
#include "platform/Event.h"
#include "tests/screenshots/DialogShots.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CListUI.h"
#include "ui/BranchList.h"

namespace screenshots {

void takeBranchEditor(Photographer& photographer) {
    photographer.loadDemo();
    if (!photographer.isPlain()) {
        photographer.makeStills();
    }
    const auto window = photographer.opened<ui::BranchList>();
    test::WindowDriver driver(*window);
    auto& actions = driver.get<toolkit::CListUI>(u"BranchList");
    actions.SelectItem(0);
    photographer.shoot("BranchList", *window);

    auto& target = driver.getIn<toolkit::CComboUI>(*actions.GetItemAt(1), u"ComboBranches");
    target.Drop();
    photographer.shoot("BranchList-combo", *window);
    target.CloseDrop();

    if (!photographer.isPlain()) { // a menu's texts are the commands', which stay
        driver.click(u"ButtonMenu");
        driver.press(platform::Key::down);
        photographer.shoot("BranchList-menu", *window);
        driver.press(platform::Key::escape);
    }

    takeQuestion(photographer, *window);
    while (driver.focusName() != u"ButtonEditZones") {
        driver.press(platform::Key::tab);
    }
    photographer.shoot("BranchList-focus", *window);
    takeDialogs(photographer);
}

void takeTourStep(Photographer& photographer) {
    photographer.state().tourStep = 1;
    const auto window = photographer.opened<ui::BranchList>();
    window->GetNative()->setGeometry(platform::Rect::at(0, 0, 1366, 728));
    settle(*window);
    photographer.shoot("Tour", *window);
    photographer.state().tourStep = -1;
}

void takeTour(Photographer& photographer, platform::Size size) {
    int& step = photographer.state().tourStep;
    step = 0;
    const auto window = photographer.opened<ui::BranchList>();
    const test::WindowDriver driver(*window);
    driver.native().setGeometry(platform::Rect::at(0, 0, size.width, size.height));
    while (step >= 0) {
        settle(*window);
        photographer.shoot("Tour-" + std::to_string(step + 1) + sizeSuffix(size), *window);
        driver.click(u"ButtonTourNext");
    }
}

void play(Photographer& photographer, const test::WindowDriver& driver) {
    driver.press(platform::Key::f5);
    const auto waitFor = [&](std::u16string_view branch, std::u16string_view time) {
        photographer.require(
            test::pumpUntil([&] {
                return driver.get(u"VideoPreview").accessibleName().ends_with(branch) &&
                       driver.textOf(u"LabelPreviewTime").starts_with(time);
            }),
            "the preview at " + core::storedText(branch) + ", " + core::storedText(time));
    };
    waitFor(u"Alarm sounds", u"0:0");
    driver.press(platform::Key::space);
    driver.click(u"SliderPreview");
    waitFor(u"Alarm sounds", u"0:02.0"); // a pixel of a short slider is some frames
    driver.click(u"CheckShowZones");
    auto& choice = *driver.get<toolkit::CListUI>(u"ListChoices").GetItemAt(0);
    const std::u16string target = choice.GetText().substr(0, choice.GetText().find(u','));
    driver.click(choice);
    waitFor(target, u"0:00.00 ");
}

void takePreview(Photographer& photographer) {
    photographer.loadDemo();
    const auto window = photographer.opened<ui::BranchList>();
    const test::WindowDriver driver(*window);
    driver.native().setGeometry(platform::Rect::at(0, 0, 1600, 900));
    test::pump();
    play(photographer, driver);
    settle(*window);
    photographer.shoot("Preview", *window);
}

} // namespace screenshots
