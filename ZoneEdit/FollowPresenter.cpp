#include "ZoneEdit/FollowPresenter.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/Texts.h"
#include "platform/Geometry.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "ui/FlagScope.h"
#include "video/CVideoUI.h"
#include "zone/NewShapes.h"
#include "zone/ShapeStretch.h"
#include "zone/StepLabel.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {
namespace {

constexpr std::size_t kLeastPoints = 3;
/// Each frame that is found keeps them all.
constexpr std::size_t kMostPoints = 2000;

/// Whether the points of `first` stay where they are up to `last`.
bool holds(const zone::Zone& zone, int first, int last) {
    int frame = zone.sameUntil(first);
    while (frame <= last && std::ranges::equal(zone.outline(first), zone.outline(frame))) {
        frame = zone.sameUntil(frame);
    }
    return frame > last;
}

} // namespace

FollowPresenter::FollowPresenter(Links links)
    : m_links(std::move(links)), m_changes(m_links.session.observe([this](const auto&) {
          if (!m_isChanging) {
              discard();
          }
      })),
      m_job(m_links.loop, m_links.files) {
    if (video::CVideoUI* control = m_links.video.control()) {
        control->AddLayer(m_layer);
    }
}

FollowPresenter::~FollowPresenter() = default;

bool FollowPresenter::canStart() const {
    return m_links.editor.place() && !m_job.isRunning();
}

void FollowPresenter::start() {
    discard();
    const std::optional<ShapeEditor::Place> place = m_links.editor.place();
    std::optional<follow::Request> request = place ? this->request(*place) : std::nullopt;
    if (!request) {
        if (place) {
            m_links.notice.refuse(core::tr(kDrawZoneFirst));
        }
        return;
    }
    if (request->count() == 0) {
        m_links.notice.refuse(core::tr(
            "There is no frame to follow to: the next one is a key, or the range ends here."_tr));
        return;
    }
    if (request->points.size() > kMostPoints) {
        m_links.notice.refuse(core::tr("This shape has too many points to be followed."_tr));
        return;
    }
    m_request = std::move(*request);
    m_place = *place;
    m_isOpen = true;
    m_job.start(
        m_request, [this](const follow::News& news) { showNews(news); },
        [this](const follow::Outcome& outcome) { finish(outcome); });
    showNews({m_place.frame, m_request.points, 1, 0, m_request.count()});
    showPanel();
    showSign(u"Follow", u"accent");
}

std::optional<follow::Request> FollowPresenter::request(const ShapeEditor::Place& place) const {
    follow::Request request{
        m_links.path, {m_links.session.zones().videoWidth, m_links.session.zones().videoHeight},
        place.frame,  m_links.editor.points(),
        place.frame,  {}};
    if (request.points.size() < kLeastPoints || request.display.width <= 0 ||
        request.display.height <= 0) {
        return std::nullopt;
    }
    setGoal(request, place);
    return request;
}

void FollowPresenter::setGoal(follow::Request& request, const ShapeEditor::Place& place) const {
    zone::FrameRange range{0, m_links.video.frameCount()};
    if (const auto marked = m_links.editor.range()) {
        if (!marked->contains(place.frame)) {
            return;
        }
        range = *marked;
    }
    const bool isBackwards = place.frame == range.end - 1;
    request.last = isBackwards ? range.first : range.end - 1;
    if (request.last == place.frame) { // a range of one frame: there is no way to look for a key on
        return;
    }
    const std::vector<int> keys = m_links.editor.keysOfAuthor();
    const auto zone = m_links.session.zones().zone(place.zone);
    // The next one on the way. A shape that is only held up to this frame was not made on that one.
    std::optional<int> key;
    for (const int each : keys) {
        const bool isNext = isBackwards ? each < place.frame && !holds(*zone, each, place.frame)
                                        : each > place.frame && !key;
        key = isNext ? each : key;
    }
    const int step = request.step();
    if (!key || (request.last - *key) * step < 0) {
        return;
    }
    request.last = *key - step;
    const auto known = zone->points(*key);
    if (known && known->size() == request.points.size()) {
        request.pointsBeyond.assign(known->begin(), known->end());
    }
}

void FollowPresenter::showNews(const follow::News& news) {
    if (!m_isOpen) {
        return;
    }
    const std::string name = m_links.session.zones().getZoneName(m_place.zone);
    m_links.controls.setText(kFollowLabel, followingText(name, news.frame, m_request.last));
    m_links.controls.setText(kMatchLabel, matchText(news.match));
    if (auto* bar = m_links.controls.find<toolkit::CProgressUI>(kFollowProgress)) {
        bar->SetPercent(news.all > 0 ? 100 * news.done / news.all : 0);
    }
    if (news.done > 0) {
        m_layer->show(news.frame, news.points);
        m_links.showFrame(news.frame);
    }
    showFound();
}

void FollowPresenter::finish(const follow::Outcome& outcome) {
    if (!m_isOpen) {
        m_links.barChanged(); // another may begin now
        return;
    }
    const int step = m_request.step();
    FollowLayer::Shapes shapes;
    int frame = m_request.frame;
    for (const follow::Points& shape : outcome.shapes) {
        shapes.emplace(frame += step, shape);
    }
    const bool isFarAlone = outcome.shapes.empty() && !outcome.shapesBeyond.empty();
    const int last = isFarAlone ? m_request.last : frame;
    frame = m_request.last;
    for (const follow::Points& shape : outcome.shapesBeyond) {
        shapes.emplace(frame, shape);
        frame -= step;
    }
    const auto count = static_cast<int>(shapes.size());
    propose(std::move(shapes));
    if (m_isAccepting && count > 0) {
        accept();
        return;
    }
    m_isAccepting = false;
    if (count == 0 && !outcome.lostAt) { // stopped at once
        close();
        return;
    }
    m_links.controls.setText(kFollowLabel, outcome.isUnreadable
                                               ? unreadableText(*outcome.lostAt, count)
                                           : outcome.lostAt ? lostText(*outcome.lostAt, count)
                                                            : followedText(last));
    m_links.controls.setText(kMatchLabel, followedMatchText(count, outcome.leastMatch));
    m_links.showFrame(outcome.lostAt ? *outcome.lostAt : last);
    showPanel();
    if (outcome.lostAt) {
        showSign(u"Warning", u"warning");
    } else {
        showSign(u"Check", u"good");
    }
}

void FollowPresenter::propose(FollowLayer::Shapes shapes) {
    m_layer->replace(std::move(shapes));
    showFound();
}

void FollowPresenter::showFound() {
    const auto& all = m_layer->shapes();
    m_links.offer(all.empty() ? zone::FrameRange{}
                              : zone::FrameRange{all.begin()->first, all.rbegin()->first + 1});
    m_links.video.repaintZone();
}

void FollowPresenter::showPanel() {
    const bool isRunning = m_job.isRunning();
    const ui::Controls& controls = m_links.controls;
    controls.setVisible(kFollowPanel, m_isOpen);
    controls.setVisible(kFollowProgress, isRunning);
    controls.setVisible(kFollowStopButton, isRunning);
    controls.setVisible(kFollowDiscardButton, !isRunning);
    if (toolkit::CControlUI* match = controls.find(kMatchLabel)) {
        match->SetAttribute(u"textcolor", isRunning ? u"good" : u"hint");
    }
    m_links.barChanged();
}

void FollowPresenter::showSign(std::u16string_view icon, std::u16string_view tint) const {
    if (toolkit::CControlUI* sign = m_links.controls.find(kFollowSign)) {
        sign->SetAttribute(u"icon", icon);
        sign->SetAttribute(u"icontint", tint);
    }
}

void FollowPresenter::stop() {
    m_job.stop();
}

void FollowPresenter::accept() {
    if (m_job.isRunning()) {
        m_isAccepting = true;
        m_job.stop();
        return;
    }
    const auto zone = m_links.session.zones().zone(m_place.zone);
    if (canAccept() && zone) {
        const FollowLayer::Shapes& found = m_layer->shapes();
        const zone::FrameRange range{found.begin()->first, found.rbegin()->first + 1};
        zone::ShapeStretch stretch(range.first);
        for (int frame = range.first; frame < range.end; ++frame) {
            const auto shape = found.find(frame); // not between two ways that did not meet
            stretch.add(shape != found.end() ? shape->second : zone->outline(frame),
                        zone->isActive(frame));
        }
        zone::NewShapes shapes{std::move(stretch)};
        shapes.followed = range;
        const ui::FlagScope changing(m_isChanging);
        m_links.session.replaceShapes({zone::StepLabel::Name::follow, m_place.zone, m_place.frame},
                                      std::move(shapes));
    }
    close();
}

bool FollowPresenter::discard() {
    const bool wasOpen = m_isOpen;
    m_isOpen = false;
    m_job.stop();
    if (wasOpen) {
        close();
    }
    return wasOpen;
}

void FollowPresenter::close() {
    m_isOpen = false;
    m_isAccepting = false;
    propose({});
    showPanel();
}

} // namespace zoneedit
