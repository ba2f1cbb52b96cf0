#include "ZoneEdit/Loupe.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "ZoneEdit/OutlinePath.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "platform/Color.h"
#include "platform/FrameBuffer.h"
#include "platform/Geometry.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "video/Video.h"
#include "zone/EditContext.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"
#include "zone/ZoneSession.h"

namespace zoneedit {
namespace {

constexpr double kEnlarged = 4;
constexpr platform::Color kGround = 0xFF000000;
constexpr platform::Color kInk = 0xFF000000;
constexpr platform::Color kPaper = 0xFFFFFFFF;
constexpr platform::Color kChosenColor = 0xFFFFFF00;
constexpr int kCross = 9;
constexpr int kMargin = 12;
constexpr int kBelowNotice = 32;
constexpr int kBelowOverview = 99 + kMargin;

} // namespace

void Loupe::show(video::CVideoUI* video, std::shared_ptr<const zone::ZoneSession> session) {
    m_video = video;
    m_session = std::move(session);
    Invalidate();
}

double Loupe::scale() const {
    return m_video->view().scale * kEnlarged;
}

void Loupe::pointAt(Point at) {
    if (m_video == nullptr || !m_video->pictureRect().contains(at)) {
        return;
    }
    const Point center = m_video->view().toDisplay(at);
    if (center != m_center) {
        m_center = center;
        Invalidate();
    }
}

void Loupe::beforeLayout(Size content) {
    const auto isShown = [this](std::u16string_view name) {
        const CControlUI* control = GetManager()->FindControl(name);
        return control != nullptr && control->isShown();
    };
    if (GetManager() == nullptr || !GetPlace()) {
        return;
    }
    const Size size = GetPlace()->size();
    int top = content.height - kMargin - size.height; // in the pane
    if (!isShown(kZonesPane)) {
        top = kMargin + (isShown(kNoticePanel) ? kBelowNotice : 0) +
              (isShown(kOverview) ? kBelowOverview : 0);
    }
    const Rect place = Rect::at(content.width - kMargin - size.width, top, size.width, size.height);
    if (place != *GetPlace()) {
        SetPlace(place);
    }
}

void Loupe::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    const Rect& pos = GetPos();
    canvas.fillRect(pos, kGround);
    if (m_video == nullptr) {
        return;
    }
    const platform::ClipScope scope(canvas, pos);
    const Point middle = pos.centred({1, 1}).topLeft();
    const video::PictureView view{{static_cast<int>(middle.x - (m_center.x + 0.5) * scale()),
                                   static_cast<int>(middle.y - (m_center.y + 0.5) * scale())},
                                  scale()};
    const Size whole = m_video->displaySize();
    if (const platform::FrameBuffer* frame = m_video->backBuffer()) {
        canvas.drawFrame(*frame, view.toWindow(Rect::at(0, 0, whole.width, whole.height)));
    }
    paintLines(canvas, view);
    for (const auto& [width, color] : {std::pair{3, kPaper}, {1, kInk}}) {
        const int half = width / 2;
        canvas.fillRect(
            {middle.x - kCross, middle.y - half, middle.x + kCross + 1, middle.y + half + 1},
            color);
        canvas.fillRect(
            {middle.x - half, middle.y - kCross, middle.x + half + 1, middle.y + kCross + 1},
            color);
    }
    canvas.fillFrame(pos, {1, 1, 1, 1}, paletteColor(toolkit::Tone::edge));
}

void Loupe::paintLines(platform::Canvas& canvas, const video::PictureView& view) const {
    const int zone = m_session->context().currentZone;
    const auto edited = m_session->zones().zone(zone);
    const int frame = m_video->video() ? m_video->video()->currentFrame : -1;
    const auto points =
        edited && frame >= 0 && frame < edited->frameCount() ? edited->points(frame) : std::nullopt;
    if (!points) {
        return;
    }
    canvas.fillPath(outlinePath(*points, view, canvas.clip(), 2), kEditedColor);
    const auto& editing = m_session->context().zones;
    const auto index = static_cast<std::size_t>(zone);
    const int chosen = index < editing.size() ? editing[index].selectedPoint : -1;
    if (chosen >= 0 && static_cast<std::size_t>(chosen) < points->size() && points->size() > 1) {
        const auto first = static_cast<std::size_t>(chosen);
        const std::array line{(*points)[first], (*points)[(first + 1) % points->size()]};
        canvas.fillPath(outlinePath(line, view, canvas.clip(), 2), kChosenColor);
    }
}

platform::AccessibleState Loupe::accessibleState() const {
    platform::AccessibleState state = CControlUI::accessibleState();
    state.visible = false;
    return state;
}

} // namespace zoneedit
