#include "tests/screenshots/ZoneEditorShots.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "ZoneEdit/CurrentZones.h"
#include "core/Text.h"
#include "platform/Bitmap.h"
#include "platform/Event.h"
#include "platform/Geometry.h"
#include "tests/screenshots/Demo.h"
#include "tests/screenshots/Shots.h"
#include "tests/support/gui/WindowDriver.h"
#include "toolkit/controls/CComboUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
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
    driver.manager().SetFocus(nullptr);
}

std::vector<platform::Point> firstZone(int frame) {
    return zoneedit::currentZoneManager()->zone(0)->shape(frame)->points;
}

void clickPicture(const test::WindowDriver& driver, platform::Point at) {
    driver.click(driver.get<video::CVideoUI>(u"Video").view().toWindow(at));
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

void choosePoint(const test::WindowDriver& driver) {
    clickPicture(driver, firstZone(kFrame).at(1));
}

void switchViews(const test::WindowDriver& driver) {
    for (const char16_t* name : {u"CheckAllZones", u"CheckOnion", u"CheckLoupe"}) {
        driver.click(name);
    }
}

void chooseRange(const test::WindowDriver& driver) {
    showFrame(driver, 30);
    driver.press(platform::Key::b);
    showFrame(driver, kFrame);
    driver.press(platform::Key::e);
}

void followSign(Photographer& photographer, const test::WindowDriver& driver) {
    constexpr int kFrom = 45;
    showFrame(driver, kFrom);
    driver.click(u"ButtonAddZone");
    driver.enter(u"EditZone", u"Sign");
    driver.click(u"OptionAddMultiPoint");
    for (const platform::Point at : firstZone(kFrom)) {
        clickPicture(driver, at);
    }
    driver.press(platform::Key::escape);
    driver.press(platform::Key::f);
    photographer.require(
        test::pumpUntil([&driver] { return driver.get(u"ButtonFollowDiscard").IsVisible(); }),
        "the end of following");
    showFrame(driver, kFrame);
}

void takeZoneEditor(Photographer& photographer, const std::string& name) {
    const OpenZoneEditor editor(photographer);
    const test::WindowDriver driver(editor.window());
    choosePoint(driver);
    platform::Bitmap picture = photographer.pictureOf(editor.window());
    if (photographer.isPlain()) {
        const video::PictureView view = driver.get<video::CVideoUI>(u"Video").view();
        for (const platform::Point at : firstZone(kFrame)) {
            hideNumber(picture, view.toWindow(at));
        }
    }
    photographer.save(name, picture);
}

void takeFollowedZone(Photographer& photographer) {
    const OpenZoneEditor editor(photographer);
    followSign(photographer, test::WindowDriver(editor.window()));
    settle(editor.window());
    photographer.shoot("ZoneEdit-followed", editor.window());
}

void takeWideZoneEditor(Photographer& photographer) {
    const OpenZoneEditor editor(photographer);
    editor.window().GetNative()->setGeometry(platform::Rect::at(0, 0, 1920, 1040));
    const test::WindowDriver driver(editor.window());
    switchViews(driver);
    chooseRange(driver);
    settle(editor.window());
    photographer.shoot("ZoneEdit-wide", editor.window());
    switchViews(driver);
}

} // namespace screenshots
