// Any bytes as a window's layout, then any input into the window it makes: neither building, laying
// out, painting, input nor taking down crashes. After the first zero byte of the data come events
// of four bytes: kind and modifiers, key or button, x, y.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/raster/RasterCanvas.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/support/gui/FakeGui.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/DropListWindow.h"
#include "toolkit/skin/ImageCache.h"
#include "toolkit/window/WindowImplBase.h"

namespace {

using platform::EventKind;

constexpr platform::Rect kPicture{0, 0, 320, 240};

class Window final : public toolkit::WindowImplBase {
public:
    using WindowImplBase::WindowImplBase;
    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"Fuzz"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Layout.xml"; }
    /// What windows do in their handlers: remove the sender, refill a list, close.
    void Notify(toolkit::TNotifyUI& message) override {
        const std::u16string& name = message.pSender->GetName();
        auto* around = toolkit::controlCast<toolkit::CContainerUI>(message.pSender->GetParent());
        if (name == u"Remove" && around != nullptr) {
            around->RemoveAll();
        } else if (name == u"Clear") {
            dynamic_cast<toolkit::CContainerUI&>(*GetPaintManager().GetRoot()).RemoveAll();
        } else if (name == u"Close") {
            Close(1);
        }
    }
};

/// Paints into a small picture, whatever size the window has.
void paint(platform::NativeWindow* window) {
    if (window != nullptr) {
        platform::Bitmap picture(kPicture.size());
        test::NoText noText;
        platform::raster::RasterCanvas canvas(picture, noText, kPicture);
        static_cast<test::FakeWindow*>(window)->events().onPaint(canvas, kPicture);
    }
}

platform::Event eventOf(const std::uint8_t* bytes) {
    static constexpr EventKind kinds[] = {
        EventKind::mouseMove,   EventKind::mouseDown,        EventKind::mouseUp,
        EventKind::keyDown,     EventKind::mouseDoubleClick, EventKind::mouseWheel,
        EventKind::keyUp,       EventKind::textInput,        EventKind::textPreedit,
        EventKind::captureLost, EventKind::mouseLeave,       EventKind::timer,
        EventKind::activated,   EventKind::deactivated,      EventKind::closeRequest,
        EventKind::keyDown};
    platform::Event event;
    event.kind = kinds[bytes[0] & 0x0FU];
    event.modifiers = {(bytes[0] & 0x10) != 0, (bytes[0] & 0x20) != 0, (bytes[0] & 0x40) != 0};
    event.key = static_cast<platform::Key>(bytes[1] % (static_cast<int>(platform::Key::z) + 1));
    event.button = bytes[1] % 8 == 0 ? platform::MouseButton::right : platform::MouseButton::left;
    event.position = {bytes[2], bytes[3]};
    event.wheelDelta = static_cast<std::int8_t>(bytes[1]) * 10;
    event.text = std::u16string(bytes[1] % 3U, static_cast<char16_t>(bytes[2] * 256 + bytes[3]));
    event.timerId = bytes[1];
    return event;
}

void play(Window& window, const std::uint8_t* events, std::size_t size) {
    for (std::size_t at = 0; at + 4 <= size && at < 4000; at += 4) {
        platform::NativeWindow* native = window.GetNative();
        platform::NativeWindow* popup =
            toolkit::DropListWindow::of(window.GetPaintManager()).native();
        const bool toPopup = (events[at] & 0x80) != 0 && popup != nullptr;
        platform::NativeWindow* target = toPopup ? popup : native;
        if (target != nullptr) {
            static_cast<test::FakeWindow*>(target)->events().onEvent(eventOf(events + at));
        }
        paint(popup);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    support::MemoryFileSystem& files = services.files;
    toolkit::ImageCache::get().clear();
    const std::uint8_t* end = std::find(data, data + size, std::uint8_t{0});
    const std::string folder = files.currentFolder() + "/UI";
    files.folders.insert(folder);
    files.files[folder + "/Layout.xml"].assign(data, end);
    test::FakeGui gui;
    Window window(gui);
    if (window.Create(nullptr, u"", 0, 0)) {
        paint(window.GetNative());
        const auto left = static_cast<std::size_t>(data + size - end);
        play(window, end + (left > 0 ? 1 : 0), left > 0 ? left - 1 : 0);
        paint(window.GetNative());
    }
    return 0;
}
