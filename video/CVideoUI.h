// The control that shows one video frame by frame, with layers drawn over it. The picture is
// stretched onto the control's rectangle. It looks for a new picture whenever a frame arrives from
// the decoder and 30 times a second, twice a second while nothing moves, and repaints only when
// there is one. UI thread only.
#pragma once

#include <atomic>
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

    /// Draws `layer` over the picture and over the layers added before.
    void AddLayer(std::shared_ptr<Layer> layer);
    /// The size in display pixels of what the picture is stretched to. It is shown as large as the
    /// control has room for, in its middle. Empty at first: that of the control.
    void setDisplaySize(Size size) { m_displaySize = size; }
    /// How the picture lies in the window, and where.
    [[nodiscard]] PictureView view() const;
    [[nodiscard]] Rect pictureRect() const;
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
    void onFrameReady();
    [[nodiscard]] int frame() const { return m_video ? m_video->currentFrame : 0; }
    void paintPicture(platform::Canvas& canvas, const Rect& target);
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
    std::unique_ptr<platform::FrameBuffer> m_backBuffer;
    Size m_displaySize;
    bool m_ready = false;
    int m_quietTicks = 0; ///< since the last new picture or request for one
};

/// Logs what failed while a back buffer was made; false when there is none. A failed window context
/// alone does not matter.
[[nodiscard]] bool reportFrameBuffer(const platform::FrameBufferResult& made);

} // namespace video
