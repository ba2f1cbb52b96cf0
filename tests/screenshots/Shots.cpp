#include "tests/screenshots/Shots.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "tests/support/gui/TestGui.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/CListHeader.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/map/SceneMap.h"

namespace screenshots {

namespace {

constexpr int kStablePictures = 12;
constexpr int kMostPictures = 200;
constexpr std::chrono::milliseconds kPause{25};

bool same(const platform::Bitmap& a, const platform::Bitmap& b) {
    bool isSame = a.size() == b.size();
    for (int y = 0; isSame && y < a.size().height; ++y) {
        isSame = std::equal(a.row(y), a.row(y) + a.size().width, b.row(y));
    }
    return isSame;
}

void wipe(toolkit::CControlUI& control) {
    control.SetText(u"");
    if (toolkit::controlCast<ui::SceneMap>(&control) != nullptr) { // writes by itself
        control.SetVisible(false);
    }
    if (auto* list = toolkit::controlCast<toolkit::CListUI>(&control)) {
        if (list->GetHeader() != nullptr) {
            wipe(*list->GetHeader());
        }
    }
    if (auto* container = toolkit::controlCast<toolkit::CContainerUI>(&control)) {
        for (int i = 0; i < container->GetCount(); ++i) {
            wipe(*container->GetItemAt(i));
        }
    }
}

} // namespace

void settle(toolkit::WindowImplBase& window) {
    platform::Bitmap last;
    int stable = 0;
    for (int i = 0; i < kMostPictures && stable < kStablePictures; ++i) {
        test::pump();
        platform::Bitmap picture = window.GetNative()->picture().snapshot();
        stable = same(picture, last) ? stable + 1 : 0;
        last = std::move(picture);
        std::this_thread::sleep_for(kPause);
    }
}

void wipeTexts(toolkit::WindowImplBase& window) {
    toolkit::CPaintManagerUI& manager = window.GetPaintManager();
    if (toolkit::controlCast<toolkit::CEditUI>(manager.GetFocus()) != nullptr) {
        manager.SetFocus(nullptr);
    }
    wipe(*manager.GetRoot());
    // Away from whatever it happened to rest on when the window came.
    test::input().mouse(*window.GetNative(), platform::EventKind::mouseMove, {1, 1});
    settle(window);
}

} // namespace screenshots
