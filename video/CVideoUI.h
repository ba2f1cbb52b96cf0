// The control that shows one video frame by frame, with layers drawn over it. The picture is
// stretched onto the control's rectangle, or zoomed. It looks for a new picture whenever a frame
// arrives from the decoder and 30 times a second, twice a second while nothing moves, and repaints
// only when there is one. UI thread only.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Accessible.h"
#include "platform/EventLoop.h"
#include "platform/FrameBuffer.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "video/Layer.h"
#include "video/PictureView.h"
#include "video/PictureZoom.h"
#include "video/Video.h"

namespace video {

class CVideoUI final : public toolkit::CContainerUI {
public:
    /// `loop` takes word of decoded frames to the UI thread; it outlives the control.
    explicit CVideoUI(platform::EventLoop& loop);
    ~CVideoUI() override;

    /// Replaces the video. False when it cannot be loaded (the log says so): the control then holds
    /// an empty one; or when there is no memory or thread for another: then it keeps what it had.
    /// The back buffer keeps the size of the first video. Intended.
    [[nodiscard]] bool LoadVideo(const std::string& path);
    /// Empty before LoadVideo.
    [[nodiscard]] const std::shared_ptr<Video>& video() const { return m_video; }

    /// Steps stop at the first and the last frame. Nothing happens without a video.
    void PrevFrame();
    void PrevTenFrames();
    void NextFrame();
    void NextTenFrames();
    /// To frame `frame`, cut to the video.
    void GoToFrame(int frame);

    /// Shows a picture that came from elsewhere, as Video::takePlayed takes it.
    void ShowPlayed(int frame, const std::uint8_t* pixels, Size size);

    /// Draws `layer` over the picture and over the layers added before.
    void AddLayer(std::shared_ptr<Layer> layer);
    /// The size in display pixels of what the picture is stretched to. It is shown as large as the
    /// control has room for, in its middle. Empty at first: that of the control.
    void setDisplaySize(Size size) { m_displaySize = size; }
    [[nodiscard]] Size displaySize() const { return m_displaySize; }
    /// How the picture lies in the window, and where. All that is drawn over it, and every press on
    /// it, goes by this.
    [[nodiscard]] PictureView view() const;
    /// What of the window shows the picture.
    [[nodiscard]] Rect pictureRect() const;

    // Without a display size there is no zoom.
    [[nodiscard]] bool isFit() const { return m_zoom.isFit(); }
    /// The scale that shows all of it as large as possible.
    [[nodiscard]] double fittingScale() const;
    void fit();
    /// To so many window pixels for a display pixel, about a point of the window.
    void zoomTo(double scale, Point about);
    void moveBy(Point delta);
    void center(Point display);
    /// Whether there is more of it than the control shows.
    [[nodiscard]] bool isCut() const;

    /// Another number with each new picture in the back buffer.
    [[nodiscard]] std::uint64_t pictureId() const { return m_pictureId; }
    /// Called with each new picture and each other view of it, so that those who show it as well
    /// can follow.
    void setFollower(std::function<void()> follower) { m_follower = std::move(follower); }
    /// What tells the pointer's shape at a point of the window; none: an arrow.
    void setPointerShape(std::function<platform::PointerShape(Point)> shapeAt) {
        m_shapeAt = std::move(shapeAt);
    }
    [[nodiscard]] bool takesPressAt(Point point) const override {
        return pictureRect().contains(point);
    }
    [[nodiscard]] platform::PointerShape pointerShapeAt(Point point) const override {
        return m_shapeAt ? m_shapeAt(point) : platform::PointerShape::arrow;
    }
    /// Repaints where the layers drew last and where they would draw now.
    void InvalidateLayers();
    /// What is called, from the loop, after another picture was shown. Empty: nothing.
    void setPictureListener(std::function<void()> shown) { m_pictureShown = std::move(shown); }

    [[nodiscard]] std::u16string GetClass() const override { return u"Video"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;
    /// The first layout with a video makes the back buffer and starts the repaint timer; a failed
    /// one is tried again by the next.
    void SetPos(const toolkit::CControlUI::Rect& pos) override;
    /// Takes every event and acts on the repaint timer alone: the window handles the mouse.
    bool DoEvent(const toolkit::TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    /// A partial paint would squeeze the whole picture into the part.
    [[nodiscard]] bool PaintsWhole() const override { return true; }
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::picture;
    }

    /// The size of the first loaded video; empty until the first layout.
    [[nodiscard]] const platform::FrameBuffer* backBuffer() const { return m_backBuffer.get(); }

private:
    /// Shared with the decoder's thread, which may hold it longer than the control lives.
    struct FrameListener {
        std::atomic<bool> posted{false};
        CVideoUI* control = nullptr; ///< UI thread only; null once the control is gone
    };

    bool CreateBackBuffer();
    bool ReleaseBackBuffer();
    /// Looks for a new picture, which the repaint timer asks for.
    void tick();
    /// Has the timer run at its full rate, since a new picture may be on its way.
    void watchForFrames();
    void startTimer(int intervalMs);
    void listenForFrames();
    void tellOfPicture();
    void onFrameReady();
    [[nodiscard]] int frame() const { return m_video ? m_video->currentFrame : 0; }
    [[nodiscard]] bool hasDisplaySize() const;
    [[nodiscard]] PictureZoom::Place place() const { return {GetPos(), m_displaySize}; }
    void viewChanged();
    void paintBeside(platform::Canvas& canvas, const Rect& picture);
    void paintPicture(platform::Canvas& canvas, const Rect& target, bool isSmooth);
    void stepBack(int count);
    void stepForward(int count);

    platform::EventLoop& m_loop;
    std::shared_ptr<Video> m_video;
    std::shared_ptr<FrameListener> m_listener;
    struct ShownLayer {
        std::shared_ptr<Layer> layer;
        Rect shown; ///< where it may have drawn
    };
    std::vector<ShownLayer> m_layers;
    std::function<platform::PointerShape(Point)> m_shapeAt;
    std::function<void()> m_pictureShown;
    std::unique_ptr<platform::FrameBuffer> m_backBuffer;
    Size m_displaySize;
    PictureZoom m_zoom;
    std::uint64_t m_pictureId = 0;
    std::function<void()> m_follower;
    bool m_ready = false;
    int m_quietTicks = 0; ///< since the last new picture or request for one
};

/// Logs what failed while a back buffer was made; false when there is none. A failed window context
/// alone does not matter.
[[nodiscard]] bool reportFrameBuffer(const platform::FrameBufferResult& made);

} // namespace video
