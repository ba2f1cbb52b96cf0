// How the parts of the zone editor are made, and what ties them together.
#include <memory>
#include <string>

#include "ZoneEdit/DraftPresenter.h"
#include "ZoneEdit/EditingParts.h"
#include "ZoneEdit/FollowPresenter.h"
#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/HeaderPresenter.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/HistoryPresenter.h"
#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/PointTools.h"
#include "ZoneEdit/TimeParts.h"
#include "ZoneEdit/TimelinePresenter.h"
#include "ZoneEdit/ViewParts.h"
#include "ZoneEdit/ZoneEdit.h"
#include "ZoneEdit/ZoneParts.h"
#include "app/state/SharedServices.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "platform/Geometry.h"
#include "platform/Gui.h"
#include "ui/Controls.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "zone/SessionKeys.h"

namespace zoneedit {

void ZoneEdit::makeParts() {
    const ui::Controls controls(GetPaintManager());
    const std::string& path = context().state.zoneEditVideo;
    core::EditorSettings* settings = context().services.editorSettings.get();
    zone::ZoneSession& session = *m_session;
    m_keys = std::make_shared<zone::SessionKeys>(session);
    m_view = std::make_unique<ViewParts>(
        commands(), ViewParts::Links{controls, m_video, m_session, m_keys, context().gui.fonts(),
                                     settings, [this] { m_editing->barsChanged(); }});
    if (m_loaded) {
        m_view->addLayers();
    }
    m_notice = std::make_unique<NoticePresenter>(controls, session);
    m_header = std::make_unique<HeaderPresenter>(controls, m_video, session, *m_notice, path);
    m_zones = std::make_unique<ZoneParts>(
        commands(), ZoneParts::Links{controls, m_video, session, *m_notice, m_view->outlines(),
                                     [this] { zoneShown(); }});
    m_time = std::make_unique<TimeParts>(
        commands(), TimeParts::Links{controls, m_video, session, *m_keys, *m_header, context().gui,
                                     path, [this] { frameShown(); }});
    m_editing = std::make_unique<EditingParts>(
        commands(), EditingParts::Links{controls, m_video, session, *m_keys, m_time->selection(),
                                        *m_notice, m_zones->list(), settings});
    m_header->setHintUse([this](bool isAllowed) { m_editing->hints().allow(isAllowed); });
    m_editing->tools().setKeepsDistance([this] { return m_view->keepsGrabDistance(); });
    m_editing->tools().setControlClick(
        [this](platform::Point at) { return m_zones->chooseInside(at); });
    m_editing->tools().setCovered([this](platform::Point at) { return m_zones->isTagAt(at); });
    m_history = std::make_unique<HistoryPresenter>(controls, session, m_zones->list(),
                                                   m_time->frames(), core::withoutExtension(path));
    makeFollow();
    m_draft = std::make_unique<DraftPresenter>(
        commands(), DraftPresenter::Links{controls, session, *m_notice, context().services});
    m_changes = session.observe([this](const auto&) { commands().showEnabled(); });
    m_rangeChanges = m_time->selection().observe([this] { commands().showEnabled(); });
}

void ZoneEdit::makeFollow() {
    if (m_loaded) {
        m_follow = std::make_unique<FollowPresenter>(FollowPresenter::Links{
            ui::Controls(GetPaintManager()), m_video, *m_session, m_editing->editor(), *m_notice,
            context().gui.loop(), *core::services().fileSystem, context().state.zoneEditVideo,
            [this](int frame) { m_time->frames().show(frame); },
            [this](const zone::FrameRange& found) { m_time->timeline().showOffered(found); },
            [this] {
                m_editing->barsChanged();
                commands().showEnabled();
            }});
    }
}

} // namespace zoneedit
