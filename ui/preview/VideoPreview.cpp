#include "ui/preview/VideoPreview.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/FontSet.h"
#include "platform/Geometry.h"
#include "platform/Path.h"
#include "platform/PictureFit.h"
#include "player/Clip.h"
#include "toolkit/skin/Palette.h"
#include "toolkit/skin/RoundBox.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/text/TextPaint.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {
namespace {

using toolkit::Tone;

constexpr unsigned kTickTimer = 1;
constexpr int kTickMs = 8;
constexpr double kOutlineWidth = 1.5;
constexpr int kTagInset = 10;
constexpr int kTagPadding = 6;
constexpr int kTagHeight = 20;
constexpr int kBelow = 130; ///< a row of buttons, and lists of one row
constexpr core::Text kEmptyHint =
    "F5 plays the scene from its first branch, Shift+F5 from the one on show."_tr;

} // namespace

void VideoPreview::run(bool runs) {
    if (GetManager() != nullptr) {
        if (runs) {
            GetManager()->SetTimer(*this, kTickTimer, kTickMs);
        } else {
            GetManager()->KillTimer(*this, kTickTimer);
        }
    }
}

void VideoPreview::showPicture(const std::uint8_t* pixels, Size size) {
    if (m_picture.size() != size) {
        m_picture = platform::Bitmap(size);
    }
    if (!m_picture.isEmpty()) {
        std::memcpy(m_picture.row(0), pixels,
                    static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
                        sizeof(std::uint32_t));
    }
    Invalidate();
}

void VideoPreview::showNothing() {
    m_picture = {};
    m_branch.clear();
    m_outlines.clear();
    Invalidate();
}

void VideoPreview::setBranch(std::u16string_view name) {
    if (m_branch != name) {
        m_branch = name;
        Invalidate();
        accessibleChanged(platform::AccessibleChange::name);
    }
}

void VideoPreview::setOutlines(std::vector<Outline> outlines) {
    if (m_outlines != outlines) {
        m_outlines = std::move(outlines);
        Invalidate();
    }
}

VideoPreview::Size VideoPreview::EstimateSize(Size available) const {
    const CControlUI* pane = GetParent();
    while (pane != nullptr && pane->GetName() != branch_list::kLeftPane) {
        pane = pane->GetParent();
    }
    const int wanted = static_cast<int>(std::int64_t{available.width} * 9 / 16);
    const int half = (pane != nullptr ? pane->GetPos().height() : available.height) / 2;
    const int most = std::max(std::min(half, available.height - kBelow), available.height / 2);
    return {0, std::max(std::min(wanted, most), 1)};
}

VideoPreview::Rect VideoPreview::pictureRect() const {
    const Size box = GetPos().size();
    const Size picture = m_picture.isEmpty() ? player::kZoneArea : m_picture.size();
    const std::int64_t byWidth = std::int64_t{box.width} * picture.height;
    const std::int64_t byHeight = std::int64_t{box.height} * picture.width;
    const Size size = byWidth <= byHeight
                          ? Size{box.width, static_cast<int>(byWidth / picture.width)}
                          : Size{static_cast<int>(byHeight / picture.height), box.height};
    return platform::withoutSlivers(GetPos().centred(size), GetPos());
}

VideoPreview::Point VideoPreview::zonePixel(Point at) const {
    const Rect picture = pictureRect();
    const auto part = [](int offset, int length, int whole) {
        return static_cast<int>((2 * std::int64_t{offset} + 1) * whole / (2 * length));
    };
    return {part(at.x - picture.left, picture.width(), player::kZoneArea.width),
            part(at.y - picture.top, picture.height(), player::kZoneArea.height)};
}

bool VideoPreview::claimsKey(const platform::Event& event) const {
    return m_listener != nullptr && event.key >= platform::Key::a &&
           event.key <= platform::Key::z && !event.modifiers.control && !event.modifiers.alt;
}

bool VideoPreview::DoEvent(const toolkit::TEventUI& event) {
    using toolkit::EventType;
    const platform::Event& native = event.native;
    switch (event.Type) {
    case EventType::timer:
        if (m_listener != nullptr) {
            m_listener->tick();
        }
        return true;
    case EventType::buttonDown:
    case EventType::doubleClick:
        if (m_listener != nullptr && pictureRect().contains(native.position)) {
            m_listener->clicked(zonePixel(native.position));
        }
        return true;
    case EventType::keyDown:
        if (!claimsKey(native)) {
            break;
        }
        if (!native.repeat) {
            m_listener->typed(static_cast<char>(
                'A' + (static_cast<int>(native.key) - static_cast<int>(platform::Key::a))));
        }
        return true;
    default:
        break;
    }
    return CControlUI::DoEvent(event);
}

platform::PointerShape VideoPreview::pointerShapeAt(Point point) const {
    const bool isHit =
        m_listener != nullptr && pictureRect().contains(point) &&
        std::any_of(m_outlines.begin(), m_outlines.end(), [&](const Outline& outline) {
            return player::contains({0, true, outline.points}, zonePixel(point));
        });
    return isHit ? platform::PointerShape::hand : platform::PointerShape::arrow;
}

void VideoPreview::DoPaint(platform::Canvas& canvas, const Rect& /*dirty*/) {
    const Rect picture = pictureRect();
    if (m_picture.isEmpty() || picture != GetPos()) {
        canvas.fillRect(GetPos(), GetManager()->look().palette()[Tone::stage]);
    }
    if (m_picture.isEmpty() && m_branch.empty()) {
        paintHint(canvas);
        return;
    }
    if (!m_picture.isEmpty()) {
        canvas.drawStill(m_picture, picture);
    }
    const platform::ClipScope clip(canvas, picture);
    for (const Outline& outline : m_outlines) {
        paintOutline(canvas, outline);
    }
    paintTag(canvas, m_branch, {picture.left + kTagInset, picture.top + kTagInset});
}

void VideoPreview::paintHint(platform::Canvas& canvas) const {
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.font = manager.look().GetFont(font::kSmall);
    look.color = manager.look().palette()[Tone::onStage];
    look.align = platform::TextAlign::center;
    Rect box = GetPos();
    box.left += kTagInset;
    box.right -= kTagInset;
    toolkit::paintTextLine(canvas, manager.fonts(), core::tr(kEmptyHint), box, look);
}

void VideoPreview::paintOutline(platform::Canvas& canvas, const Outline& outline) const {
    if (outline.points.empty()) {
        return;
    }
    const Rect picture = pictureRect();
    std::vector<platform::PointF> corners;
    for (const Point point : outline.points) {
        corners.push_back(
            {picture.left + (point.x + 0.5) * picture.width() / player::kZoneArea.width,
             picture.top + (point.y + 0.5) * picture.height() / player::kZoneArea.height});
    }
    platform::Path path;
    path.addPolygon(corners);
    const toolkit::Palette& colors = GetManager()->look().palette();
    canvas.fillPath(path.stroked(kOutlineWidth + 2), colors[Tone::halo]);
    canvas.fillPath(path.stroked(kOutlineWidth), colors[Tone::zoneKind]);
    const auto left = std::min_element(corners.begin(), corners.end(),
                                       [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto top = std::min_element(corners.begin(), corners.end(),
                                      [](const auto& a, const auto& b) { return a.y < b.y; });
    paintTag(canvas, outline.name,
             {std::max(static_cast<int>(left->x), picture.left),
              std::max(static_cast<int>(top->y) - kTagHeight - 4, picture.top)});
}

void VideoPreview::paintTag(platform::Canvas& canvas, std::u16string_view text, Point at) const {
    if (text.empty()) {
        return;
    }
    toolkit::CPaintManagerUI& manager = *GetManager();
    toolkit::TextLook look;
    look.font = manager.look().GetFont(font::kSmall);
    look.color = manager.look().palette()[Tone::onTag];
    const int most = std::max(pictureRect().right - at.x - kTagInset, 0);
    const int width =
        std::min(manager.fonts().measure(text, look.font).width + 2 * kTagPadding, most);
    toolkit::fillRoundBox(canvas, Rect::at(at.x, at.y, width, kTagHeight), 3,
                          manager.look().palette()[Tone::tag]);
    toolkit::paintTextLine(canvas, manager.fonts(), text,
                           Rect::at(at.x + kTagPadding, at.y, width - 2 * kTagPadding, kTagHeight),
                           look);
}

std::u16string VideoPreview::accessibleName() const {
    return m_branch.empty() ? core::tr("Preview"_tr) : core::tr("Preview of {0}"_tr, m_branch);
}

} // namespace ui
