#include "video/CVideoUI.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <utility>

#include "core/Log.h"
#include "platform/Canvas.h"
#include "platform/Geometry.h"
#include "platform/PictureFit.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/window/CPaintManagerUI.h"

namespace video {

namespace {

constexpr unsigned kRepaintTimer = 1824;
constexpr int kRepaintMs = 33;
/// While nothing moves, waking up 30 times a second is nearly all that an open editor costs.
constexpr int kStillMs = 500;
constexpr int kTicksUntilStill = 30;

} // namespace

bool reportFrameBuffer(const platform::FrameBufferResult& made) {
    const auto log = core::Log::get();
    if (made.windowContextFailed) {
        log->Error("Unable to get window DC (%08X)", made.windowContextError);
    }
    if (made.memoryContextFailed) {
        log->Error("Unable to create compatible DC (%08X)", made.memoryContextError);
        return false;
    }
    if (made.bitmapFailed || !made.buffer) {
        log->Error("Unable to create back buffer bitmap (%08X)", made.bitmapError);
        return false;
    }
    return true;
}

CVideoUI::CVideoUI(platform::EventLoop& loop)
    : m_loop(loop), m_listener(std::make_shared<FrameListener>()) {
    m_listener->control = this;
}

CVideoUI::~CVideoUI() {
    m_listener->control = nullptr;
    ReleaseBackBuffer();
    if (m_video) {
        m_video->setFrameReadyCallback({});
    }
}

void* CVideoUI::GetInterface(std::u16string_view name) {
    return name == u"Video" ? this : CContainerUI::GetInterface(name);
}

bool CVideoUI::LoadVideo(const std::string& path) {
    std::shared_ptr<Video> loaded;
    try {
        loaded = std::make_shared<Video>();
    } catch (const std::exception&) { // no memory, or no further thread
        core::Log::get()->Error("Unable to load Theora video");
        return false;
    }
    if (m_video) {
        m_video->setFrameReadyCallback({});
    }
    m_video = std::move(loaded);
    listenForFrames();
    return m_video->Load(path);
}

void CVideoUI::listenForFrames() {
    // One task at a time is under way, however many frames the decoder delivers meanwhile.
    m_video->setFrameReadyCallback([listener = m_listener, &loop = m_loop] {
        if (listener->posted.exchange(true)) {
            return;
        }
        try {
            loop.post([listener] {
                listener->posted = false;
                if (listener->control != nullptr) {
                    listener->control->onFrameReady();
                }
            });
        } catch (const std::exception&) {
            listener->posted = false; // no memory: the next frame asks again, or a tick finds it
        }
    });
}

void CVideoUI::onFrameReady() {
    if (m_video && GetManager() != nullptr && m_video->hasDueFrame()) {
        watchForFrames();
        Invalidate();
        if (platform::NativeWindow* window = GetManager()->GetWindow()) {
            window->picture().repaintNow();
        }
    }
}

void CVideoUI::tellOfPicture() {
    m_loop.post([listener = m_listener] {
        if (listener->control != nullptr && listener->control->m_pictureShown) {
            listener->control->m_pictureShown();
        }
    });
}

void CVideoUI::stepBack(int count) {
    watchForFrames();
    m_video->seekTo(std::max(m_video->currentFrame - count, 0));
}

void CVideoUI::PrevFrame() {
    if (m_video) {
        stepBack(1);
        Invalidate();
    }
}

void CVideoUI::PrevTenFrames() {
    if (m_video) {
        stepBack(10);
        NeedUpdate();
    }
}

void CVideoUI::stepForward(int count) {
    if (!m_video) {
        return;
    }
    watchForFrames();
    const int last = m_video->frameCount - 1;
    // Not by the sum: a file may claim as many frames as an int holds.
    const int left = last - m_video->currentFrame;
    if (m_video->seekTo(left > count ? m_video->currentFrame + count : last)) {
        NeedUpdate();
    } else {
        Invalidate();
    }
}

void CVideoUI::NextFrame() {
    stepForward(1);
}

void CVideoUI::NextTenFrames() {
    stepForward(10);
}

void CVideoUI::GoToFrame(int frame) {
    if (m_video && m_video->frameCount > 0) {
        watchForFrames();
        m_video->seekTo(std::clamp(frame, 0, m_video->frameCount - 1));
        NeedUpdate();
    }
}

void CVideoUI::ShowPlayed(int frame, const std::uint8_t* pixels, Size size) {
    if (m_video) {
        m_video->takePlayed(frame, pixels, size, m_backBuffer.get());
        Invalidate();
    }
}

void CVideoUI::AddLayer(std::shared_ptr<Layer> layer) {
    m_layers.push_back({std::move(layer), {}});
    Invalidate();
}

bool CVideoUI::hasDisplaySize() const {
    return m_displaySize.width > 0 && m_displaySize.height > 0;
}

PictureView CVideoUI::view() const {
    return hasDisplaySize() ? m_zoom.view(place()) : PictureView{GetPos().topLeft()};
}

platform::Rect CVideoUI::pictureRect() const {
    const Rect whole = Rect::at(0, 0, m_displaySize.width, m_displaySize.height);
    return whole.isEmpty() ? GetPos() : view().toWindow(whole).intersected(GetPos());
}

double CVideoUI::fittingScale() const {
    return hasDisplaySize() ? PictureZoom::fittingScale(place()) : 1;
}

void CVideoUI::fit() {
    m_zoom.fit();
    viewChanged();
}

void CVideoUI::zoomTo(double scale, Point about) {
    if (hasDisplaySize()) {
        m_zoom.zoomTo(scale, about, place());
        viewChanged();
    }
}

void CVideoUI::moveBy(Point delta) {
    if (hasDisplaySize() && !isFit()) {
        m_zoom.moveBy(delta, place());
        viewChanged();
    }
}

void CVideoUI::center(Point display) {
    if (hasDisplaySize() && !isFit()) {
        m_zoom.center(display, place());
        viewChanged();
    }
}

bool CVideoUI::isCut() const {
    const Rect whole = Rect::at(0, 0, m_displaySize.width, m_displaySize.height);
    return !isFit() && view().toWindow(whole) != pictureRect();
}

void CVideoUI::viewChanged() {
    Invalidate();
    if (m_follower) {
        m_follower();
    }
}

void CVideoUI::InvalidateLayers() {
    if (GetManager() == nullptr) {
        return;
    }
    for (const ShownLayer& entry : m_layers) {
        for (const Rect& area : {entry.shown, entry.layer->area(view(), frame())}) {
            GetManager()->Invalidate(area.intersected(GetPos()));
        }
    }
}

void CVideoUI::SetPos(const Rect& pos) {
    CContainerUI::SetPos(pos);
    if (m_ready) {
        return;
    }
    m_ready = CreateBackBuffer();
}

bool CVideoUI::CreateBackBuffer() {
    platform::NativeWindow* window = GetManager() != nullptr ? GetManager()->GetWindow() : nullptr;
    if (!m_video || m_video->width < 1 || m_video->height < 1 || window == nullptr) {
        return false;
    }
    platform::FrameBufferResult made =
        window->picture().createFrameBuffer({m_video->width, m_video->height});
    if (!reportFrameBuffer(made)) {
        return false;
    }
    m_backBuffer = std::move(made.buffer);
    // Two thirds of the picture's bytes; the rest is as the system made it. Intended.
    const std::size_t pixels =
        static_cast<std::size_t>(m_video->width) * static_cast<std::size_t>(m_video->height);
    std::memset(m_backBuffer->bits(), 0, std::min(pixels * 2, m_backBuffer->byteCount()));
    startTimer(kRepaintMs);
    return true;
}

void CVideoUI::startTimer(int intervalMs) {
    if (GetManager() != nullptr) {
        GetManager()->SetTimer(*this, kRepaintTimer, intervalMs);
    }
}

void CVideoUI::watchForFrames() {
    if (m_ready && m_quietTicks >= kTicksUntilStill) {
        startTimer(kRepaintMs);
    }
    m_quietTicks = 0;
}

void CVideoUI::tick() {
    // Looking for a frame also lets the clip carry out a waiting seek.
    if (m_video && m_video->hasDueFrame()) {
        watchForFrames();
        Invalidate();
    } else if (m_quietTicks < kTicksUntilStill && ++m_quietTicks == kTicksUntilStill) {
        startTimer(kStillMs);
    }
}

bool CVideoUI::ReleaseBackBuffer() {
    m_backBuffer.reset();
    return GetManager() != nullptr && GetManager()->KillTimer(*this, kRepaintTimer);
}

bool CVideoUI::DoEvent(const toolkit::TEventUI& event) {
    if (event.Type == toolkit::UIEVENT_TIMER) {
        tick();
    }
    return true;
}

void CVideoUI::DoPaint(platform::Canvas& canvas, const Rect& dirty) {
    const Rect picture =
        isFit() ? platform::withoutSlivers(pictureRect(), GetPos()) : pictureRect();
    if (picture != GetPos()) {
        paintBeside(canvas, m_video && m_backBuffer ? picture : Rect{});
    }
    const Rect paint = dirty.intersected(picture);
    if (paint.isEmpty()) {
        return;
    }
    PictureView shown = view();
    Rect target = shown.toWindow(Rect::at(0, 0, m_displaySize.width, m_displaySize.height));
    if (isFit()) { // whatever part is painted shows the whole picture
        target = paint;
        shown.offset.x += paint.left - picture.left;
        shown.offset.y += paint.top - picture.top;
    }
    paintPicture(canvas, target, shown.scale != 1);
    for (ShownLayer& entry : m_layers) {
        entry.shown = entry.layer->area(shown, frame());
        entry.layer->paint(canvas, shown, frame());
    }
}

// A large picture would be painted over a ground of its own size.
void CVideoUI::paintBeside(platform::Canvas& canvas, const Rect& picture) {
    const Rect all = GetPos();
    const Rect inside = picture.isEmpty() ? Rect{all.right, all.bottom, all.right, all.bottom}
                                          : picture.intersected(all);
    for (const Rect& part : {Rect{all.left, all.top, all.right, inside.top},
                             Rect{all.left, inside.bottom, all.right, all.bottom},
                             Rect{all.left, inside.top, inside.left, inside.bottom},
                             Rect{inside.right, inside.top, all.right, inside.bottom}}) {
        if (!part.isEmpty()) {
            const platform::ClipScope clip(canvas, part);
            paintBackground(canvas);
        }
    }
}

void CVideoUI::paintPicture(platform::Canvas& canvas, const Rect& target, bool isSmooth) {
    if (!m_video) {
        return;
    }
    const bool isNew = m_video->RenderFrame(m_backBuffer.get());
    m_pictureId += isNew ? 1 : 0;
    if (m_backBuffer && isSmooth) {
        canvas.drawFrameSmoothly(*m_backBuffer, target);
    } else if (m_backBuffer) {
        canvas.drawFrame(*m_backBuffer, target);
    }
    if (isNew && m_pictureShown) {
        tellOfPicture();
    }
    // A new picture came while a part was painted: the other parts have to follow.
    const Rect visible = target.intersected(GetPos());
    if (isNew && canvas.clip().intersected(visible) != visible) {
        Invalidate();
    }
    if (isNew && m_follower) {
        m_follower();
    }
}

} // namespace video
