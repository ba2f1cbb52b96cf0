#include "ZoneEdit/ZoomPresenter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/Loupe.h"
#include "ZoneEdit/Overview.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "core/Texts.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/FigureTexts.h"
#include "ui/FlagScope.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/ShapeDrawing.h"

namespace zoneedit {

using platform::EventKind;
using platform::MouseButton;
using platform::Point;

namespace {

constexpr std::array kListed{50, 100, 200, 400};
constexpr std::array kSteps{50, 75, 100, 150, 200, 300, 400};
constexpr core::Text kFitText = "Fit"_tr;
constexpr int kNotch = 120;
/// Two scales as near as this show the same.
constexpr double kSame = 1e-3;

bool isTypingControl(const std::u16string& name) {
    return std::find(std::begin(kTypingControls), std::end(kTypingControls), name) !=
           std::end(kTypingControls);
}

/// The scales that the wheel steps through, in ascending order.
std::vector<double> stepsWith(double fitting) {
    std::vector<double> steps{fitting};
    for (const int percent : kSteps) {
        if (std::abs(percent / 100.0 - fitting) > kSame) {
            steps.push_back(percent / 100.0);
        }
    }
    std::sort(steps.begin(), steps.end());
    return steps;
}

} // namespace

ZoomPresenter::ZoomPresenter(ui::Controls controls, EditedVideo& video, zone::ZoneSession& session,
                             std::function<void()> tapped)
    : m_controls(controls), m_video(video), m_session(session), m_tapped(std::move(tapped)) {
    if (video::CVideoUI* control = m_video.control()) {
        control->setFollower([this] { showOverview(); });
    }
}

ZoomPresenter::~ZoomPresenter() {
    if (video::CVideoUI* control = m_video.control()) {
        control->setFollower(nullptr);
    }
}

void ZoomPresenter::showAll() {
    if (auto* overview = m_controls.find<Overview>(kOverview)) {
        overview->setVideo(m_video.control());
    }
    showZoom();
}

void ZoomPresenter::windowSized() {
    showOverview();
}

void ZoomPresenter::showZoom() {
    auto* combo = m_controls.find<toolkit::CComboUI>(kZoomCombo);
    const video::CVideoUI* control = m_video.control();
    if (combo == nullptr || control == nullptr) {
        return;
    }
    m_percents.assign(kListed.begin(), kListed.end());
    int chosen = 0;
    if (!control->isFit()) {
        const int percent = static_cast<int>(std::lround(control->view().scale * 100));
        const auto at = std::lower_bound(m_percents.begin(), m_percents.end(), percent);
        chosen = static_cast<int>(at - m_percents.begin()) + 1;
        if (at == m_percents.end() || *at != percent) {
            m_percents.insert(at, percent);
        }
    }
    auto texts = std::make_shared<toolkit::CComboUI::Texts>();
    texts->push_back(core::tr(kFitText));
    for (const int percent : m_percents) {
        texts->push_back(ui::percentText(percent));
    }
    {
        const ui::FlagScope showing(m_isShowing);
        combo->SetItemTexts(std::move(texts));
        combo->SelectItem(chosen);
    }
    showOverview();
}

void ZoomPresenter::showOverview() {
    const video::CVideoUI* control = m_video.control();
    if (toolkit::CControlUI* overview = m_controls.find(kOverview)) {
        const bool isCut = control != nullptr && control->isCut();
        if (overview->isShown() != isCut) {
            overview->SetVisible(isCut);
        }
        overview->Invalidate();
    }
    if (toolkit::CControlUI* loupe = m_controls.find(kLoupe)) {
        loupe->Invalidate();
    }
}

void ZoomPresenter::choose() {
    const auto* combo = m_controls.find<toolkit::CComboUI>(kZoomCombo);
    video::CVideoUI* control = m_video.control();
    if (m_isShowing || combo == nullptr || control == nullptr) {
        return;
    }
    const int chosen = combo->GetCurSel();
    if (chosen == 0) {
        control->fit();
        showZoom();
    } else if (chosen > 0 && static_cast<std::size_t>(chosen) <= m_percents.size()) {
        const platform::Rect& room = control->GetPos();
        zoomTo(m_percents[static_cast<std::size_t>(chosen) - 1] / 100.0,
               room.centred({1, 1}).topLeft());
    }
}

void ZoomPresenter::zoomTo(double scale, Point about) {
    m_video.control()->zoomTo(scale, about);
    showZoom();
}

void ZoomPresenter::step(int by, Point about) {
    video::CVideoUI* control = m_video.control();
    const double fitting = control->fittingScale();
    const double now = control->view().scale;
    const std::vector<double> steps = stepsWith(fitting);
    double next = now;
    if (by > 0) {
        const auto above = std::find_if(steps.begin(), steps.end(),
                                        [now](double step) { return step > now + kSame; });
        next = above != steps.end() ? *above : now;
    } else {
        const auto below = std::find_if(steps.rbegin(), steps.rend(),
                                        [now](double step) { return step < now - kSame; });
        next = below != steps.rend() ? *below : now;
    }
    if (next == fitting) {
        control->fit();
        showZoom();
    } else if (next != now) {
        zoomTo(next, about);
    }
}

bool ZoomPresenter::isOnPicture(Point at) const {
    const video::CVideoUI* control = m_video.control();
    return control != nullptr && m_controls.manager().FindControl(at) == control;
}

bool ZoomPresenter::handle(const platform::Event& event) {
    if (const video::CVideoUI* control = m_video.control()) {
        // Handles keep their size on the screen.
        m_session.setHandleReach(zone::kHandleSide / 2.0 / control->view().scale);
        if (auto* loupe =
                event.kind == EventKind::mouseMove ? m_controls.find<Loupe>(kLoupe) : nullptr) {
            loupe->pointAt(event.position);
        }
    }
    switch (event.kind) {
    case EventKind::mouseDown:
    case EventKind::mouseDoubleClick: {
        const bool isOurs = press(event);
        // The caption's are the window's, which says nothing of their end.
        m_isLeftHeld =
            m_isLeftHeld || (!isOurs && event.button == MouseButton::left &&
                             !m_controls.manager().captionRect().contains(event.position));
        return isOurs;
    }
    case EventKind::mouseMove:
        return m_from && move(event.position);
    case EventKind::mouseUp:
        if (m_isLeftHeld && event.button == MouseButton::left) {
            m_isLeftHeld = false;
            if (m_from) {
                m_from.reset();
                m_controls.manager().ReleaseCapture(); // not every tool held it
            }
            return false;
        }
        return m_from && release(event);
    case EventKind::mouseWheel:
        return wheel(event);
    case EventKind::keyDown:
    case EventKind::keyUp:
        return key(event);
    case EventKind::captureLost:
        m_from.reset();
        m_isLeftHeld = false;
        return false;
    case EventKind::deactivated:
        m_isSpaceHeld = false;
        return false;
    default:
        return false;
    }
}

bool ZoomPresenter::press(const platform::Event& event) {
    if (m_from) { // one button at a time
        return true;
    }
    if (!isOnPicture(event.position)) {
        return false;
    }
    // The keys that type are the picture's from now on.
    m_controls.manager().SetFocus(nullptr);
    const bool byMiddle = event.button == MouseButton::middle;
    if (byMiddle && event.kind == EventKind::mouseDoubleClick) {
        m_video.control()->fit();
        showZoom();
        return true;
    }
    if (byMiddle || (event.button == MouseButton::left && m_isSpaceHeld)) {
        m_from = event.position;
        m_button = event.button;
        m_controls.manager().SetCapture();
        return true;
    }
    return false;
}

bool ZoomPresenter::move(Point at) {
    const Point by{at.x - m_from->x, at.y - m_from->y};
    if (by != Point{}) {
        m_isDragged = true;
        m_from = at;
        m_video.control()->moveBy(by);
    }
    return true;
}

bool ZoomPresenter::release(const platform::Event& event) {
    if (event.button == m_button) {
        m_from.reset();
        if (!m_isLeftHeld) {
            m_controls.manager().ReleaseCapture();
        }
    }
    return true;
}

bool ZoomPresenter::wheel(const platform::Event& event) {
    if (!event.modifiers.control || !isOnPicture(event.position)) {
        m_wheel = 0;
        return false;
    }
    m_wheel += event.wheelDelta;
    for (; m_wheel >= kNotch; m_wheel -= kNotch) {
        step(1, event.position);
    }
    for (; m_wheel <= -kNotch; m_wheel += kNotch) {
        step(-1, event.position);
    }
    return true;
}

bool ZoomPresenter::key(const platform::Event& event) {
    if (event.key != platform::Key::space) {
        return false;
    }
    if (event.kind == EventKind::keyUp) {
        const bool wasHeld = std::exchange(m_isSpaceHeld, false);
        if (wasHeld && !m_isDragged && !m_from) {
            m_tapped();
        }
        return wasHeld;
    }
    if (m_isSpaceHeld) {
        return true; // and goes on being held
    }
    const toolkit::CControlUI* focus = m_controls.manager().GetFocus();
    const bool isOurs = m_video.control() != nullptr &&
                        (focus == nullptr || isTypingControl(focus->GetName())) &&
                        event.modifiers == platform::Modifiers{} && !event.repeat;
    m_isSpaceHeld = isOurs;
    m_isDragged = false;
    return isOurs;
}

} // namespace zoneedit
