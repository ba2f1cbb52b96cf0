#include "tests/screenshots/ZoneEditorShots.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>

#include "ZoneEdit/CurrentZones.h"
#include "core/Text.h"
#include "platform/Bitmap.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "tests/screenshots/Demo.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CComboUI.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace screenshots {

namespace {

constexpr int kHalfNumber = 6;

/// Paints over the number of a point, within its circle.
void hideNumber(platform::Bitmap& picture, platform::Point middle) {
    for (int y = middle.y - kHalfNumber; y <= middle.y + kHalfNumber; ++y) {
        std::uint32_t* row = picture.row(y) + middle.x;
        std::fill(row - kHalfNumber, row + kHalfNumber + 1, 0xFFFFFFFF);
    }
}

void showFrame(const test::WindowDriver& driver, int frame) {
    driver.enter(u"EditCurrentFrame", core::displayText(std::to_string(frame)));
}

} // namespace

OpenZoneEditor::OpenZoneEditor(Photographer& photographer) {
    photographer.state().zoneEditVideo =
        (std::filesystem::current_path() / "Scenes" / kScene / kVideo).string();
    m_window = photographer.opened<zoneedit::ZoneEdit>();
    const test::WindowDriver driver(*m_window);
    driver.get<toolkit::CComboUI>(u"ComboZone").SelectItem(0);
    showFrame(driver, kFrame);
    settle(*m_window);
}

OpenZoneEditor::~OpenZoneEditor() {
    zoneedit::setCurrentZoneManager(nullptr);
}

void takeZoneEditor(Photographer& photographer, const std::string& name) {
    const OpenZoneEditor editor(photographer);
    const test::WindowDriver driver(editor.window());
    const platform::Point corner = driver.get(u"Video").GetPos().topLeft();
    const auto shape = zoneedit::currentZoneManager()->zone(0)->shape(kFrame);
    const platform::Point chosen = shape->points.at(1);
    driver.click(platform::Point{corner.x + chosen.x, corner.y + chosen.y});
    platform::Bitmap picture = photographer.pictureOf(editor.window());
    if (photographer.isPlain()) {
        for (const platform::Point at : shape->points) {
            hideNumber(picture, {corner.x + at.x, corner.y + at.y});
        }
    }
    photographer.save(name, picture);
}

void takeFollowedZone(Photographer& photographer) {
    constexpr int kFrom = 45;
    const OpenZoneEditor editor(photographer);
    const test::WindowDriver driver(editor.window());
    showFrame(driver, kFrom);
    const auto shape = zoneedit::currentZoneManager()->zone(0)->shape(kFrom);
    driver.click(u"ButtonAddZone");
    driver.enter(u"EditZone", u"Sign");
    driver.click(u"OptionAddMultiPoint");
    const platform::Point corner = driver.get(u"Video").GetPos().topLeft();
    for (const platform::Point at : shape->points) {
        driver.click(platform::Point{corner.x + at.x, corner.y + at.y});
    }
    driver.manager().SetFocus(nullptr);
    driver.press(platform::Key::escape);
    driver.press(platform::Key::f);
    photographer.require(
        test::pumpUntil([&driver] { return driver.get(u"ButtonFollowDiscard").IsVisible(); }));
    showFrame(driver, kFrame);
    settle(editor.window());
    photographer.shoot("ZoneEdit-followed", editor.window());
}

void takeWideZoneEditor(Photographer& photographer) {
    const OpenZoneEditor editor(photographer);
    editor.window().GetNative()->setGeometry(platform::Rect::at(0, 0, 1920, 1040));
    const test::WindowDriver driver(editor.window());
    constexpr const char16_t* kShown[] = {u"CheckAllZones", u"CheckOnion", u"CheckLoupe"};
    for (const char16_t* name : kShown) {
        driver.click(name);
    }
    driver.enter(u"EditRangeFrom", u"30");
    driver.enter(u"EditRangeTo", u"62");
    driver.manager().SetFocus(nullptr);
    settle(editor.window());
    photographer.shoot("ZoneEdit-wide", editor.window());
    for (const char16_t* name : kShown) { // the next window begins as the last one ended
        driver.click(name);
    }
}

} // namespace screenshots
