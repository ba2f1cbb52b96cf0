#include "tests/screenshots/SizeShots.h"

#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Window.h"
#include "tests/screenshots/BranchEditorShots.h"
#include "tests/screenshots/DialogShots.h"
#include "tests/screenshots/Shots.h"
#include "tests/screenshots/StartShots.h"
#include "tests/screenshots/ZoneEditorShots.h"
#include "toolkit/window/WindowImplBase.h"
#include "ui/BranchList.h"

namespace screenshots {

namespace {

void takeSizesOf(Photographer& photographer, const std::string& name,
                 toolkit::WindowImplBase& window) {
    platform::NativeWindow& native = *window.GetNative();
    platform::WindowHost& windows = photographer.gui().windows();
    const platform::Size least = window.leastSize();
    for (const platform::Size size :
         {least, platform::Size{1366, 728}, {1600, 900}, {1920, 1040}}) {
        native.setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        settle(window);
        photographer.shoot(name + sizeSuffix(size), window);
    }
    windows.setZoom(2);
    for (const platform::Size size : {least, platform::Size{1920, 1080}}) {
        native.setGeometry(platform::Rect::at(0, 0, size.width, size.height));
        settle(window);
        photographer.shoot(name + (size == least ? "@200" : "@3840x2160"), window);
    }
    windows.setZoom(1);
}

} // namespace

void takeSizes(Photographer& photographer) {
    photographer.loadDemo();
    photographer.makeStills();
    takeSizesOf(photographer, "BranchList", *photographer.opened<ui::BranchList>());
    for (const platform::Size size : {platform::Size{884, 672}, {1600, 900}}) {
        takeTour(photographer, size);
    }
    takeSizesOf(photographer, "ZoneEdit", OpenZoneEditor(photographer).window());
    photographer.useLowScreen();
    takeSizesOf(photographer, "ZoneEditSmall", OpenZoneEditor(photographer).window());
    photographer.gui().windows().setZoom(2);
    photographer.setSuffix("@200");
    takeStart(photographer, {});
    takeQuestion(photographer, *photographer.opened<ui::BranchList>());
    takeDialogs(photographer);
    photographer.gui().windows().setZoom(1);
}

} // namespace screenshots
