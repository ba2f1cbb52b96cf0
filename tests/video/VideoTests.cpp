// The copy into the back buffer, and the control in a window without a screen: when it makes its
// buffer, what it paints, where its steps lead, and the news that the decoder's thread sends.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/raster/RasterCanvas.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/FakeGui.h"
#include "toolkit/window/WindowImplBase.h"
#include "video/CVideoUI.h"

namespace {

using platform::Rect;
using platform::Size;
using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

constexpr Rect kPlace{20, 10, 20 + 64, 10 + 48};

TEST(CopyBottomUp, MirrorsRowsSwapsColoursAndStaysInsideTheBuffer) {
    const struct {
        const char* what;
        int width;
        int height;
        Bytes target; ///< the whole buffer afterwards; 0xEE where nothing was written
    } cases[] = {
        {"packed rows, so most widths shift", 1, 2, {6, 5, 4, 3, 2, 1, 0xEE, 0xEE}},
        {"what fits, no half pixel", 2, 2, {9, 8, 7, 12, 11, 10, 3, 2, 1, 0xEE, 0xEE}},
        {"more than are swapped at once",
         5,
         1,
         {3, 2, 1, 6, 5, 4, 9, 8, 7, 12, 11, 10, 15, 14, 13}},
        {"no buffer", 1, 1, {}},
        {"a height below 1", 3, -4, {0xEE}},
    };
    const Bytes source = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    for (const auto& item : cases) {
        Bytes target(item.target.size(), 0xEE);
        video::copyBottomUp(source.data(), item.width, item.height, target.data(), target.size());
        EXPECT_EQ(target, item.target) << item.what;
    }
}

TEST(BackBuffer, EachFaultHasItsMessage) {
    const support::LogCapture log;
    EXPECT_FALSE(video::reportFrameBuffer({.windowContextFailed = true,
                                           .windowContextError = 0x57,
                                           .bitmapError = 0xE,
                                           .buffer = {}}));
    EXPECT_FALSE(video::reportFrameBuffer({.memoryContextFailed = true,
                                           .bitmapFailed = true,
                                           .memoryContextError = 0x80070008,
                                           .buffer = {}}));
    EXPECT_EQ(log.errors(), (Lines{"Unable to get window DC (00000057)",
                                   "Unable to create back buffer bitmap (0000000E)",
                                   "Unable to create compatible DC (80070008)"}));
}

/// A window that holds nothing but the control.
class VideoWindow final : public toolkit::WindowImplBase {
public:
    using WindowImplBase::WindowImplBase;
    std::u16string GetWindowClassName() const override { return u"VideoWindow"; }
    std::string GetSkinFile() const override { return "Video.xml"; }
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view /*name*/) override {
        auto made = std::make_unique<video::CVideoUI>(Gui().loop());
        control = made.get();
        return made;
    }

    video::CVideoUI* control = nullptr;
};

/// Marks the display pixel (frame, 5), or the one that it is moved to.
class Dot final : public video::Layer {
public:
    explicit Dot(platform::Color color = platform::rgb(250, 0, 0)) : m_color(color) {}
    void paint(platform::Canvas& canvas, const video::PictureView& view, int frame) override {
        canvas.fillRect(area(view, frame), m_color);
    }
    [[nodiscard]] Rect area(const video::PictureView& view, int frame) const override {
        return view.toWindow(Rect{frame, row, frame + 1, row + 1});
    }

    int row = 5;

private:
    platform::Color m_color;
};

class VideoControl : public support::TempFolderTest {
protected:
    VideoControl() {
        support::writeBytes("UI/Video.xml", "<Window size=\"200,150\"><Video/></Window>");
        support::writeBytes("clip.ogv", support::makeClip({.frames = 20}));
        EXPECT_TRUE(m_window->Create(nullptr, u"Video", 0, 0));
    }

    video::CVideoUI& control() { return *m_window->control; }
    /// What the window shows once the control has painted the part `dirty`.
    platform::Bitmap painted(const Rect& dirty, const Rect& clip = {0, 0, 200, 150}) {
        platform::Bitmap picture({200, 150});
        test::NoText noText;
        platform::raster::RasterCanvas canvas(picture, noText, clip);
        control().DoPaint(canvas, dirty);
        return picture;
    }
    void goTo(int frame) {
        control().GoToFrame(frame);
        while (!control().video()->hasDueFrame()) {
            std::this_thread::yield();
        }
    }

    support::LogCapture m_log;
    test::FakeGui m_gui;
    std::unique_ptr<VideoWindow> m_window = std::make_unique<VideoWindow>(m_gui);
};

TEST_F(VideoControl, WithoutAPictureItStepsAndPaintsNothing) {
    EXPECT_EQ(control().GetClass(), u"Video");
    EXPECT_EQ(control().GetInterface(u"Video"), &control());
    for (const bool loaded : {false, true}) { // a failed load leaves an empty video
        if (loaded) {
            EXPECT_FALSE(control().LoadVideo("missing.ogv"));
        }
        control().SetPos({0, 0, 40, 40});
        control().NextFrame();
        control().PrevFrame();
        control().PrevTenFrames();
        control().GoToFrame(3);
        EXPECT_EQ(painted(control().GetPos()).at(25, 25), platform::Bitmap({1, 1}).at(0, 0));
        EXPECT_EQ(control().backBuffer(), nullptr);
    }
    EXPECT_FALSE(control().video()->RenderFrame(nullptr));
    EXPECT_EQ(control().video()->currentFrame, -1);
    EXPECT_EQ(m_log.errors(), Lines{"Unable to load Theora video"});
}

TEST_F(VideoControl, TheFirstLayoutWithAVideoMakesTheBufferForGood) {
    ASSERT_TRUE(control().LoadVideo("clip.ogv"));
    control().SetPos(kPlace);
    const platform::FrameBuffer* buffer = control().backBuffer();
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(buffer->size(), (Size{64, 48}));
    // Two thirds are cleared, the rest is as the system made it.
    const std::uint8_t* rest = buffer->bits() + std::ptrdiff_t{64} * 48 * 2;
    EXPECT_EQ(std::count(buffer->bits(), rest, 0), rest - buffer->bits());
    EXPECT_EQ(*rest, test::FakeFrameBuffer::kUnwritten);

    support::writeBytes("large.ogv", support::makeClip({.width = 128, .height = 96, .frames = 2}));
    EXPECT_TRUE(control().LoadVideo("large.ogv"));
    control().SetPos({0, 0, 50, 50});
    EXPECT_EQ(control().video()->width, 128);
    goTo(1);
    (void)painted(kPlace); // no more than fits is copied
    EXPECT_EQ(control().backBuffer(), buffer);
}

TEST_F(VideoControl, StepsStopAtTheLastFrameHoweverManyTheFileClaims) {
    constexpr int kMost = 0x7FFFFFFF;
    support::writeBytes(
        "clip.ogv",
        support::makeClip(
            {.frames = 2, .emptyLastPage = true, .lastPageGranule = std::int64_t{kMost} << 4}));
    ASSERT_TRUE(control().LoadVideo("clip.ogv"));
    EXPECT_EQ(control().video()->frameCount, kMost);
    control().GoToFrame(kMost - 3);
    control().NextTenFrames();
    EXPECT_EQ(control().video()->currentFrame, kMost - 1);
}

TEST_F(VideoControl, StretchesTheWholeFrameOntoWhateverPartIsPaintedUnderTheLayers) {
    ASSERT_TRUE(control().LoadVideo("clip.ogv"));
    control().SetPos(kPlace);
    goTo(17); // bits 0 and 4: the first and the fifth block are light
    const platform::Bitmap whole = painted({0, 0, 1000, 1000});
    const platform::Bitmap half = painted({kPlace.left + 32, 0, 1000, 1000});
    for (int block = 0; block < 8; ++block) {
        const auto blue = whole.at(kPlace.left + block * 8 + 4, kPlace.top + 4) & 0xFFU;
        const auto squeezed = half.at(kPlace.left + 32 + block * 4 + 2, kPlace.top + 4) & 0xFFU;
        EXPECT_EQ(blue > 128, block == 0 || block == 4) << block;
        EXPECT_EQ(squeezed > 128, block == 0 || block == 4) << block;
    }

    control().AddLayer(std::make_shared<Dot>());
    control().AddLayer(std::make_shared<Dot>(platform::rgb(0, 0, 250)));
    EXPECT_EQ(painted(kPlace).at(kPlace.left + 17, kPlace.top + 5) & 0xFFFFFFU, 0x0000FAU)
        << "in their order, at the current frame's number";
}

TEST(PictureView, AClickAtAnyScaleHitsThePixelThatWasDrawnThere) {
    for (const double scale : {0.5, 0.8, 1.0, 1.5, 2.0, 4.0}) {
        const video::PictureView view{{-37, 12}, scale};
        for (const int x : {-3, 0, 1, 639, 1279}) {
            const platform::Point shown = view.toWindow(platform::Point{x, -x});
            const double off = scale < 1 ? 1 / scale : 1;
            EXPECT_LT(std::abs(view.toDisplay(shown).x - x), off) << scale;
            EXPECT_LT(std::abs(view.toDisplay(shown).y + x), off) << scale;
            EXPECT_TRUE(view.toWindow(Rect{x, -x, x + 1, 1 - x}).contains(shown)) << scale;
        }
    }
    const video::PictureView identity;
    EXPECT_EQ(identity.toWindow(platform::Point{7, -9}), (platform::Point{7, -9}));
    EXPECT_EQ(identity.toWindow(platform::Point{0x7FFFFFFF, -0x7FFFFFFF}),
              (platform::Point{1 << 27, -(1 << 27)}))
        << "near enough for a canvas";
}

TEST_F(VideoControl, ATickOrAChangeRepaintsNoMoreThanWhatIsNew) {
    ASSERT_TRUE(control().LoadVideo("clip.ogv"));
    control().SetPos(kPlace);
    goTo(5);
    (void)painted(kPlace);
    auto& native = static_cast<test::FakeWindow&>(*m_window->GetNative());
    const auto tick = [&] {
        (void)native.takeDirty();
        toolkit::TEventUI timer;
        timer.Type = toolkit::UIEVENT_TIMER;
        control().DoEvent(timer);
        return native.takeDirty();
    };
    EXPECT_EQ(native.timerMs(), 33);
    for (int count = 0; count < 60; ++count) {
        EXPECT_EQ(tick(), std::vector<Rect>{}) << "a still picture";
    }
    EXPECT_EQ(native.timerMs(), 500);
    control().video()->seekTo(9); // asked for by nobody's repaint
    while (!control().video()->hasDueFrame()) {
        std::this_thread::yield();
    }
    EXPECT_EQ(tick(), std::vector<Rect>{kPlace});
    EXPECT_EQ(native.timerMs(), 33) << "more may follow";
    const auto dot = std::make_shared<Dot>();
    control().AddLayer(dot);
    (void)painted(kPlace);
    (void)native.takeDirty();
    dot->row = 700;
    control().InvalidateLayers();
    EXPECT_EQ(native.takeDirty(), (std::vector<Rect>{Rect::at(29, 15, 1, 1)}))
        << "where it was; outside of the picture there is nothing to repaint";
    dot->row = 6;
    control().InvalidateLayers();
    EXPECT_EQ(native.takeDirty(),
              (std::vector<Rect>{Rect::at(29, 15, 1, 1), Rect::at(29, 16, 1, 1)}));
    goTo(3);
    (void)native.takeDirty();
    (void)painted(kPlace, Rect::at(29, 15, 1, 1));
    EXPECT_EQ(native.takeDirty(), std::vector<Rect>{kPlace}) << "it took a new picture";
}

TEST_F(VideoControl, AFrameRepaintsTheWindowAtOnceAndFindsNobodyOnceTheControlIsGone) {
    m_gui.refusedTasks = 1; // of the decoder's thread
    ASSERT_TRUE(control().LoadVideo("clip.ogv"));
    control().SetPos(kPlace);
    auto& native = static_cast<test::FakeWindow&>(*m_window->GetNative());
    while (native.repaints() == 0) {
        m_gui.runTasks();
    }
    toolkit::TEventUI press;
    press.Type = toolkit::EventType::buttonDown;
    EXPECT_TRUE(control().DoEvent(press)); // the window handles the mouse
    goTo(5);
    m_window.reset();
    m_gui.runTasks();
}

} // namespace
