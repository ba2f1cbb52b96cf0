// The video control in a window: when it makes its buffer, what it paints and where it steps.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/ClipMaker.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TempFolder.h"
#include "tests/support/gui/WindowDriver.h"
#include "video/CVideoUI.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace {

using platform::Rect;
using toolkit::TEventUI;

/// A window that holds nothing but the control.
class VideoWindow final : public toolkit::WindowImplBase {
public:
    VideoWindow(platform::Gui& gui, std::string video)
        : WindowImplBase(gui), m_path(std::move(video)) {}
    std::u16string GetWindowClassName() const override { return u"VideoWindow"; }
    std::string GetSkinFile() const override { return "Video.xml"; }
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view name) override {
        if (name != u"Video") {
            return nullptr;
        }
        auto made = std::make_unique<video::CVideoUI>(Gui().loop());
        control = made.get();
        loaded = !m_path.empty() && made->LoadVideo(m_path);
        return made;
    }

    video::CVideoUI* control = nullptr;
    bool loaded = false;

private:
    std::string m_path;
};

/// Notes where a frame was drawn and how large it is.
class FrameCanvas final : public platform::Canvas {
public:
    Rect clip() const override { return {0, 0, 1000, 1000}; }
    void pushClip(const Rect& /*rect*/) override {}
    void popClip() override {}
    void fillRect(const Rect& /*rect*/, platform::Color /*color*/) override {}
    void drawBitmap(const platform::Bitmap& /*bitmap*/, const Rect& /*source*/,
                    const Rect& /*target*/) override {}
    void drawFrame(const platform::FrameBuffer& frame, const Rect& target) override {
        frames.push_back(target);
        size = frame.size();
    }
    void drawLine(platform::Point from, platform::Point /*to*/, platform::Color) override {
        lines.push_back(from);
    }
    void drawEllipse(const Rect& /*box*/, platform::Color, platform::Color) override {}
    void drawText(std::u16string_view, const Rect&, platform::FontHandle, platform::Color,
                  platform::TextAlign) override {}

    std::vector<Rect> frames;
    std::vector<platform::Point> lines;
    platform::Size size;
};

class VideoControl : public support::TempFolderTest {
protected:
    VideoControl() {
        support::writeBytes("UI/Video.xml",
                            std::string("<Window size=\"200,150\"><Container>"
                                        "<Video name=\"Video\" pos=\"20,10,160,120\"/>"
                                        "</Container></Window>"));
        makeClip("clip.ogv", 64, 48, 30);
        makeClip("large.ogv", 128, 96, 5);
    }
    ~VideoControl() override {
        m_window.reset();
        zone::setCurrentZoneManager(nullptr);
    }
    static void makeClip(const std::string& path, int width, int height, int frames) {
        support::ClipSpec spec;
        spec.width = width;
        spec.height = height;
        spec.frames = frames;
        support::writeBytes(path, support::makeClip(spec));
    }
    video::CVideoUI& show(const std::string& path) {
        m_window = std::make_unique<VideoWindow>(test::gui(), path);
        EXPECT_TRUE(m_window->Create(nullptr, u"Video", 0, 0));
        m_window->ShowWindow(true);
        test::pump();
        return *m_window->control;
    }
    static int frameOf(const video::CVideoUI& control) { return control.video()->currentFrame; }

    support::LogCapture m_log;
    std::unique_ptr<VideoWindow> m_window;
};

TEST_F(VideoControl, IsAVideoAndAContainer) {
    video::CVideoUI& control = show("");
    EXPECT_EQ(control.GetClass(), u"Video");
    EXPECT_EQ(control.GetInterface(u"Video"), &control);
    EXPECT_EQ(control.GetInterface(u"video"), nullptr);
    EXPECT_NE(control.GetInterface(u"Container"), nullptr);
}

TEST_F(VideoControl, WithoutAVideoItHasNoBufferAndNoSteps) {
    video::CVideoUI& control = show("");
    control.NextFrame();
    control.PrevFrame();
    control.NextTenFrames();
    control.PrevTenFrames();
    control.GoToFrame(3);
    EXPECT_EQ(control.video(), nullptr);
    EXPECT_EQ(control.backBuffer(), nullptr);
    FrameCanvas canvas;
    control.DoPaint(canvas, control.GetPos());
    EXPECT_TRUE(canvas.frames.empty());
    EXPECT_TRUE(m_log.errors().empty());
}

TEST_F(VideoControl, AFailedLoadKeepsAnEmptyVideo) {
    video::CVideoUI& control = show("missing.ogv");
    EXPECT_FALSE(m_window->loaded);
    ASSERT_NE(control.video(), nullptr);
    EXPECT_EQ(frameOf(control), -1);
    control.NextFrame();
    control.PrevTenFrames();
    control.GoToFrame(2);
    EXPECT_EQ(frameOf(control), -1);
    EXPECT_EQ(control.backBuffer(), nullptr);
    EXPECT_EQ(m_log.errors(), std::vector<std::string>{"Unable to load Theora video"});
}

TEST_F(VideoControl, AFrameOutsideTheVideoIsCutToIt) {
    video::CVideoUI& control = show("clip.ogv");
    for (const auto& [asked, reached] :
         {std::pair{-7, 0}, std::pair{12, 12}, std::pair{30, 29}, std::pair{1000000, 29}}) {
        control.GoToFrame(asked);
        EXPECT_EQ(frameOf(control), reached);
    }
}

TEST_F(VideoControl, TheFirstLayoutMakesTheBufferAndTellsTheZonesTheSize) {
    const auto zones = zone::ZoneManager::createEmpty();
    zone::setCurrentZoneManager(zones);
    video::CVideoUI& control = show("clip.ogv");
    ASSERT_NE(control.backBuffer(), nullptr);
    EXPECT_EQ(control.backBuffer()->size(), (platform::Size{64, 48}));
    EXPECT_EQ(zones->videoWidth, 160);
    EXPECT_EQ(zones->videoHeight, 120);
    // Later layouts leave both alone.
    const auto* buffer = control.backBuffer();
    control.SetPos({0, 0, 50, 50});
    EXPECT_EQ(control.backBuffer(), buffer);
    EXPECT_EQ(zones->videoWidth, 160);
}

TEST_F(VideoControl, WithoutABufferEachLayoutTellsTheSizeAgain) {
    const auto zones = zone::ZoneManager::createEmpty();
    zone::setCurrentZoneManager(zones);
    video::CVideoUI& control = show("");
    control.SetPos({0, 0, 50, 40});
    EXPECT_EQ(zones->videoWidth, 50);
    EXPECT_EQ(zones->videoHeight, 40);
}

TEST_F(VideoControl, ASecondVideoKeepsTheFirstBuffer) {
    video::CVideoUI& control = show("clip.ogv");
    const std::shared_ptr<video::Video> first = control.video();
    EXPECT_TRUE(control.LoadVideo("large.ogv"));
    EXPECT_NE(control.video(), first);
    EXPECT_EQ(control.video()->width, 128);
    EXPECT_EQ(control.backBuffer()->size(), (platform::Size{64, 48}));
    FrameCanvas canvas;
    control.DoPaint(canvas, control.GetPos());
    EXPECT_EQ(canvas.size, (platform::Size{64, 48}));
}

TEST_F(VideoControl, StretchesTheWholeFrameOntoWhateverPartIsPainted) {
    video::CVideoUI& control = show("clip.ogv");
    FrameCanvas canvas;
    control.DoPaint(canvas, {0, 0, 1000, 1000});
    control.DoPaint(canvas, {100, 0, 1000, 1000});
    control.DoPaint(canvas, {0, 0, 20, 10});
    EXPECT_EQ(canvas.frames, (std::vector<Rect>{{20, 10, 180, 130}, {100, 10, 180, 130}}));
    EXPECT_TRUE(control.PaintsWhole()) << "a window paints it as a whole only";
}

TEST_F(VideoControl, DrawsTheCurrentZoneFromThePaintedPartsCorner) {
    const auto zones = zone::ZoneManager::createEmpty();
    zone::setCurrentZoneManager(zones);
    video::CVideoUI& control = show("clip.ogv");
    const auto zone = zone::Zone::create(30);
    zones->addZone(zone);
    zones->addPoint(0, 0, 5, 6);
    zone->setSelectedPoint(0);
    zones->addPoint(0, 0, 50, 60);
    FrameCanvas none;
    control.DoPaint(none, control.GetPos());
    EXPECT_TRUE(none.lines.empty()) << "no zone is chosen";
    zones->currentZone = 0;
    FrameCanvas canvas;
    control.DoPaint(canvas, control.GetPos());
    ASSERT_FALSE(canvas.lines.empty());
    EXPECT_EQ(canvas.lines.front(), (platform::Point{25, 16}));
}

TEST_F(VideoControl, TakesEveryEventAndActsOnTheTimerAlone) {
    video::CVideoUI& control = show("clip.ogv");
    for (const auto type :
         {toolkit::EventType::buttonDown, toolkit::EventType::keyDown, toolkit::EventType::wheel,
          toolkit::EventType::mouseMove, toolkit::UIEVENT_TIMER}) {
        TEventUI event;
        event.Type = type;
        EXPECT_TRUE(control.DoEvent(event));
    }
    EXPECT_EQ(frameOf(control), 0);
}

} // namespace
