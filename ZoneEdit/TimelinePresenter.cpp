#include "ZoneEdit/TimelinePresenter.h"

#include <algorithm>

#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ui/FigureTexts.h"
#include "zone/EditContext.h"
#include "zone/ShapeKeys.h"
#include "zone/ShapeStretch.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

TimelinePresenter::TimelinePresenter(ui::Controls controls, EditedVideo& video,
                                     zone::ZoneSession& session, zone::SessionKeys& keys,
                                     FrameSelection& selection, FramesPresenter& frames)
    : m_controls(controls), m_video(video), m_session(session), m_keys(keys),
      m_selection(selection), m_frames(frames),
      m_changes(session.observe([this](const auto& changes) { note(changes); })),
      m_rangeChanges(selection.observe([this] { showRange(); })) {
    if (Timeline* line = timeline()) {
        line->setListener(this);
        line->showClip(video.frameCount(), video.framesPerSecond());
    }
}

TimelinePresenter::~TimelinePresenter() {
    if (Timeline* line = timeline()) {
        line->setListener(nullptr);
    }
}

Timeline* TimelinePresenter::timeline() const {
    return m_controls.find<Timeline>(kTimeline);
}

void TimelinePresenter::showAll() {
    if (m_video.hasFrames()) {
        m_controls.setText(kDurationLabel,
                           ui::lengthText((m_video.frameCount() - 1) / m_video.framesPerSecond()));
    }
    showFrame();
}

void TimelinePresenter::showFrame() {
    if (m_video.hasFrames()) {
        m_controls.setText(kTimeLabel, ui::lengthText(m_video.frame() / m_video.framesPerSecond()));
    }
    if (Timeline* line = timeline()) {
        line->showFrame(m_video.frame());
    }
}

void TimelinePresenter::showZone() {
    m_isStale = true;
    invalidate();
}

void TimelinePresenter::showOffered(const zone::FrameRange& frames) {
    if (Timeline* line = timeline()) {
        line->showOffered(frames);
    }
}

void TimelinePresenter::note(const std::vector<zone::ZoneChange>& /*changes*/) {
    m_isStale = true;
    // Keys are found once a drag is over: in a long clip that would hold up its moves.
    if (!m_session.inGesture()) {
        invalidate();
    }
}

void TimelinePresenter::invalidate() {
    if (Timeline* line = timeline()) {
        line->Invalidate();
    }
}

const zone::ShapeKeys& TimelinePresenter::keys() {
    return m_keys.of(m_session.context().currentZone);
}

const TimelineMarks& TimelinePresenter::marks() {
    if (m_isStale && !m_session.inGesture()) {
        m_marks.keys = keys().frames();
        const auto zone = m_session.zones().zone(m_session.context().currentZone);
        m_marks.isZone = zone != nullptr;
        m_marks.active = zone ? zone::activeRuns(*zone) : std::vector<zone::FrameRange>();
        m_isStale = false;
    }
    return m_marks;
}

void TimelinePresenter::frameWanted(int frame) {
    m_frames.want(frame);
}

void TimelinePresenter::frameChosen() {
    m_frames.showWanted();
}

void TimelinePresenter::steps(int frames) {
    m_frames.stepBy(frames);
}

void TimelinePresenter::rangeMarked(int one, int other) {
    m_selection.mark(one, other);
}

void TimelinePresenter::rangeCleared() {
    m_selection.clear();
}

void TimelinePresenter::showRange() {
    if (Timeline* line = timeline()) {
        line->showRange(m_selection.span());
    }
}

bool TimelinePresenter::cancelDrag() {
    Timeline* line = timeline();
    return line != nullptr && line->cancel();
}

void TimelinePresenter::goTo(const std::optional<int>& frame) {
    if (frame && m_video.hasFrames()) {
        m_frames.show(std::clamp(*frame, 0, m_video.frameCount() - 1));
    }
}

void TimelinePresenter::first() {
    goTo(0);
}

void TimelinePresenter::last() {
    goTo(m_video.frameCount() - 1);
}

void TimelinePresenter::keyBefore() {
    goTo(keys().before(m_video.frame()));
}

void TimelinePresenter::nextKey() {
    goTo(keys().after(m_video.frame()));
}

void TimelinePresenter::fit() {
    if (Timeline* line = timeline()) {
        line->fit();
    }
}

} // namespace zoneedit
