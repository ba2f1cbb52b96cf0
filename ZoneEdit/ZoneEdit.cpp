#include "ZoneEdit/ZoneEdit.h"

#include <string>
#include <string_view>
#include <utility>

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/EditingParts.h"
#include "ZoneEdit/FlagsPresenter.h"
#include "ZoneEdit/FollowPresenter.h"
#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/HeaderPresenter.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/HistoryPresenter.h"
#include "ZoneEdit/Loupe.h"
#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/OnionLayer.h"
#include "ZoneEdit/OutlinesLayer.h"
#include "ZoneEdit/Overview.h"
#include "ZoneEdit/PlayPresenter.h"
#include "ZoneEdit/PointTools.h"
#include "ZoneEdit/RangePresenter.h"
#include "ZoneEdit/RenamedZones.h"
#include "ZoneEdit/Timeline.h"
#include "ZoneEdit/TimelinePresenter.h"
#include "ZoneEdit/ViewToggles.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneVersions.h"
#include "ZoneEdit/ZonesLayer.h"
#include "ZoneEdit/ZonesPanel.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "ZoneEdit/ZoomPresenter.h"
#include "app/state/SharedServices.h"
#include "core/EditorSettings.h"
#include "core/FileError.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Event.h"
#include "platform/EventLoop.h"
#include "platform/Gui.h"
#include "player/Clip.h"
#include "recovery/Backups.h"
#include "recovery/DraftInfo.h"
#include "recovery/KeptDrafts.h"
#include "recovery/ZoneDraft.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/skin/WindowLook.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/Confirmation.h"
#include "ui/Controls.h"
#include "ui/DraftProblem.h"
#include "ui/DraftTexts.h"
#include "ui/EarlierVersions.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ContextMenu.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "video/CVideoUI.h"
#include "video/PictureView.h"
#include "zone/EditContext.h"
#include "zone/Scale.h"
#include "zone/SessionKeys.h"
#include "zone/ShapeDrawing.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

namespace {

constexpr ui::ContextMenu kContextMenus[] = {{kZoneCombo, ui::kZoneRows},
                                             {kZoneEdit, ui::kZoneRows}};
constexpr std::u16string_view kPanes[] = {kNoticePanel, kToolOptions[0]};
constexpr int kFullScreenHeight = 860;
constexpr platform::Size kFullSize{1280, 720};
constexpr platform::Size kSmallSize{1024, 600};
constexpr int kNumberFont = 3;
constexpr int kTagFont = 4;

} // namespace

std::shared_ptr<ZoneEdit> ZoneEdit::create(const ui::WindowContext& context) {
    return std::make_shared<ZoneEdit>(context);
}

ZoneEdit::ZoneEdit(const ui::WindowContext& context)
    : EditorWindow(context, {ui::kZoneEditorCommands, kContextMenus, kPanes}),
      m_displaySize(context.gui.windows().primaryScreenHeight() >= kFullScreenHeight ? kFullSize
                                                                                     : kSmallSize),
      m_session(std::make_shared<zone::ZoneSession>(std::make_shared<zone::ZoneManager>())) {
    commands().setTypingControls(kTypingControls);
    bindCommands();
}

ZoneEdit::~ZoneEdit() = default;

bool ZoneEdit::run() {
    return runScreen(core::tr("Zone Edit"_tr));
}

std::string ZoneEdit::GetSkinFile() const {
    return m_displaySize == kFullSize ? "ZoneEdit.xml" : "ZoneEditSmall.xml";
}

std::unique_ptr<toolkit::CControlUI> ZoneEdit::CreateControl(std::u16string_view className) {
    if (className == kOverview) {
        return std::make_unique<Overview>();
    }
    if (className == kTimeline) {
        return std::make_unique<Timeline>();
    }
    if (className == kLoupe) {
        return std::make_unique<Loupe>();
    }
    if (className != kVideo) {
        return EditorWindow::CreateControl(className);
    }
    auto control = std::make_unique<video::CVideoUI>(context().gui.loop());
    control->SetLabel(core::tr("Picture"_tr));
    control->setDisplaySize(m_displaySize);
    m_video.setControl(control.get());
    return control;
}

void ZoneEdit::InitWindow() {
    openVideo();
    makeParts();
    m_header->showAll();
    m_zones->showAll();
    m_flags->showAll();
    m_editing->showAll();
    m_frames->showAll();
    m_zoom->showAll();
    m_panel->showAll();
    if (auto* loupe = controls().find<Loupe>(kLoupe)) {
        loupe->show(m_video.control(), m_session);
    }
    m_toggles->showAll();
    m_timeline->showAll();
    viewChanged();
    if (context().state.zoneEditResumes) {
        resume();
    }
    keepDraft(); // its offer comes after what the caption has to say, which it stands in front of
    commands().showEnabled();
}

void ZoneEdit::resume() {
    const auto& places = context().state.zonePlaces;
    const auto place = places.find(context().state.zoneEditVideo);
    if (m_loaded && place != places.end()) {
        const auto& [frame, zone] = place->second;
        if (zone >= 0 && zone < m_session->zones().zoneCount()) {
            m_zones->show(zone);
        }
        if (frame > 0 && frame < m_video.frameCount()) {
            m_frames->show(frame);
        }
    }
}

void ZoneEdit::Close(int code) {
    if (m_loaded && !IsClosing()) {
        context().state.zonePlaces[context().state.zoneEditVideo] = {
            m_video.frame(), m_session->context().currentZone};
    }
    EditorWindow::Close(code);
}

void ZoneEdit::openVideo() {
    const std::string& path = context().state.zoneEditVideo;
    if (m_video.control() == nullptr || path.empty()) {
        return;
    }
    m_loaded = loadVideo();
    if (!m_loaded) {
        core::Log::get()->Error("Unable to load video %s", path.c_str());
        m_result.unreadableVideo = path;
        // The window goes once its loop runs.
        context().gui.loop().post([window = weak_from_this()] {
            if (const auto self = window.lock()) {
                self->Close(1);
            }
        });
    }
}

bool ZoneEdit::loadVideo() {
    if (!m_video.control()->LoadVideo(context().state.zoneEditVideo) || !loadZones()) {
        return false;
    }
    m_video.control()->NeedUpdate(); // laid out without a video, it has no buffer for frames yet
    return true;
}

bool ZoneEdit::loadZones() {
    const auto scale = zone::scaleBetween(m_displaySize, m_video.size());
    // A video that does not tell its length must not cut what was stored for it.
    const std::shared_ptr<zone::ZoneManager> zones = zone::ZoneManager::createForEditing(
        core::withoutExtension(context().state.zoneEditVideo),
        m_video.hasFrames() ? m_video.frameCount() : zone::kStoredFrameCount, scale);
    if (!zones) {
        core::Log::get()->Error("Unable to create zone manager interface");
        return false;
    }
    zones->scale = scale;
    zones->setKeeper(
        std::make_shared<recovery::Backups>([folder = versionsFolder()] { return folder; },
                                            [settings = context().services.editorSettings] {
                                                return !settings || settings->keepBackups();
                                            }));
    setCurrentZoneManager(zones);
    m_session = std::make_shared<zone::ZoneSession>(zones);
    m_renamed = std::make_unique<RenamedZones>(*zones);
    m_session->setArea(m_displaySize);
    const zone::NumberFont font{GetPaintManager().look().GetFont(kNumberFont),
                                &context().gui.fonts()};
    m_keys = std::make_shared<zone::SessionKeys>(*m_session);
    m_onion = std::make_shared<OnionLayer>(m_session, m_keys);
    m_outlines =
        std::make_shared<OutlinesLayer>(*m_video.control(), m_session, context().gui.fonts(),
                                        GetPaintManager().look().GetFont(kTagFont));
    m_drawing = std::make_shared<ZonesLayer>(m_session, font);
    m_video.control()->AddLayer(m_onion);
    m_video.control()->AddLayer(m_outlines);
    m_video.control()->AddLayer(m_drawing);
    return true;
}

std::string ZoneEdit::versionsFolder() const {
    const auto& scene = context().services.sceneManager;
    return recovery::zoneVersionsFolder(scene ? scene->Name() : std::string(),
                                        core::fileTitle(context().state.zoneEditVideo));
}

void ZoneEdit::makeParts() {
    const ui::Controls controls(GetPaintManager());
    zone::ZoneSession& session = *m_session;
    m_notice = std::make_unique<NoticePresenter>(controls, session);
    m_header = std::make_unique<HeaderPresenter>(controls, m_video, session, *m_notice,
                                                 context().state.zoneEditVideo);
    m_flags = std::make_unique<FlagsPresenter>(controls, m_video, session);
    m_zones = std::make_unique<ZonesPresenter>(controls, m_video, session, *m_flags);
    m_frames = std::make_unique<FramesPresenter>(controls, m_video, session, *m_header, [this] {
        m_flags->showActive();
        m_timeline->showFrame();
        m_panel->refresh();
        if (m_editing) {
            m_editing->shown();
        }
    });
    if (!m_keys) { // there is no video
        m_keys = std::make_shared<zone::SessionKeys>(session);
    }
    m_selection = std::make_unique<FrameSelection>(m_video.frameCount());
    m_range = std::make_unique<RangePresenter>(controls, m_video, *m_selection);
    m_timeline = std::make_unique<TimelinePresenter>(controls, m_video, session, *m_keys,
                                                     *m_selection, *m_frames);
    if (m_video.control() != nullptr) {
        m_video.control()->setPictureListener([this] { m_frames->pictureShown(); });
        m_player = std::make_unique<PlayPresenter>(controls, m_video, session, *m_frames,
                                                   context().gui, context().state.zoneEditVideo);
        m_frames->setMoveListener([this] { m_player->pause(); });
    }
    m_editing = std::make_unique<EditingParts>(
        commands(),
        EditingParts::Links{controls, m_video, session, *m_keys, *m_selection, *m_notice, *m_zones,
                            context().services.editorSettings.get()});
    m_header->setHintUse([this](bool isAllowed) { m_editing->hints().allow(isAllowed); });
    m_editing->tools().setKeepsDistance(
        [this] { return m_toggles && m_toggles->isOn(Toggle::grabDistance); });
    m_editing->tools().setControlClick([this](platform::Point at) { return chooseInside(at); });
    m_panel = std::make_unique<ZonesPanel>(controls, m_video, session, *m_zones, m_outlines);
    m_zoom = std::make_unique<ZoomPresenter>(controls, m_video, session,
                                             [this] { commands().run(ui::command::kPlayVideo); });
    m_toggles = std::make_unique<ViewToggles>(controls, context().services.editorSettings.get(),
                                              [this](Toggle /*toggle*/) { viewChanged(); });
    m_history =
        std::make_unique<HistoryPresenter>(controls, session, *m_zones, *m_frames,
                                           core::withoutExtension(context().state.zoneEditVideo));
    makeFollow();
    m_draftProblem = std::make_unique<ui::DraftProblem>(controls, context().services.drafts.get());
    m_changes = session.observe([this](const auto&) { commands().showEnabled(); });
}

void ZoneEdit::makeFollow() {
    if (m_loaded) {
        m_follow = std::make_unique<FollowPresenter>(FollowPresenter::Links{
            ui::Controls(GetPaintManager()), m_video, *m_session, m_editing->editor(), *m_notice,
            context().gui.loop(), *core::services().fileSystem, context().state.zoneEditVideo,
            [this](int frame) { m_frames->show(frame); },
            [this](const zone::FrameRange& found) { m_timeline->showOffered(found); },
            [this] {
                m_editing->barsChanged();
                commands().showEnabled();
            }});
    }
}

void ZoneEdit::keepDraft() {
    const app_state::SharedServices& services = context().services;
    if (!m_loaded || !services.drafts || !services.sceneManager) {
        return;
    }
    m_draft = std::make_unique<recovery::ZoneDraft>(
        *m_session, *services.drafts, services.sceneManager->Name(), context().state.zoneEditVideo);
    if (const recovery::KeptDraft* draft = m_draft->offered()) {
        m_notice->offer(ui::draftText(draft->info.video, draft->info.time, m_draft->isSavedSince()),
                        {kRestoreDraftButton});
    }
}

void ZoneEdit::restoreDraft() {
    m_notice->close();
    if (m_draft && !m_draft->restore()) {
        m_notice->refuse(core::tr("The unsaved work cannot be read."_tr));
    }
}

void ZoneEdit::viewChanged() {
    if (!m_toggles || !m_drawing) {
        return;
    }
    m_onion->show(m_toggles->isOn(Toggle::onion));
    m_outlines->show(m_toggles->isOn(Toggle::allZones));
    m_drawing->setEdge(m_toggles->isOn(Toggle::clearLines) ? zone::LineEdge::dark
                                                           : zone::LineEdge::none);
    setVisibleOf(kLoupe, m_toggles->isOn(Toggle::loupe));
    setVisibleOf(kLoupeHead, m_toggles->isOn(Toggle::loupe));
    GetPaintManager().UpdateLayout();
    m_editing->barsChanged(); // the panel moves the picture, over which the bar of the range is
    m_video.control()->Invalidate();
}

bool ZoneEdit::chooseByTag(const platform::Event& event) {
    const video::CVideoUI* control = m_video.control();
    const bool isPress =
        event.kind == platform::EventKind::mouseDown && event.button == platform::MouseButton::left;
    if (!isPress || !m_outlines || GetPaintManager().FindControl(event.position) != control) {
        return false;
    }
    const int zone = m_outlines->tagAt(event.position, m_video.frame());
    if (zone >= 0) {
        m_zones->show(zone);
    }
    return zone >= 0;
}

bool ZoneEdit::chooseInside(platform::Point at) {
    const platform::Point pixel = m_video.control()->view().toDisplay(at);
    const int edited = m_session->context().currentZone;
    const int count = m_session->zones().zoneCount();
    for (int step = 1; step < count; ++step) {
        const int zone = (edited + step) % count;
        const auto points = m_session->zones().zone(zone)->points(m_video.frame());
        if (points && player::contains({0, true, {points->begin(), points->end()}}, pixel)) {
            m_zones->show(zone);
            return true;
        }
    }
    return false;
}

void ZoneEdit::chooseBeside(int by) {
    const int count = m_session->zones().zoneCount();
    const int edited = m_session->context().currentZone;
    m_zones->show(edited < 0 ? 0 : (edited + by + count) % count);
}

void ZoneEdit::remove() {
    const std::u16string name =
        core::displayText(m_session->zones().getZoneName(m_session->context().currentZone));
    m_zones->remove();
    m_notice->offer(core::tr("Zone \"{0}\" removed."_tr, name), {kNoticeUndoButton});
}

void ZoneEdit::OnClick(toolkit::TNotifyUI& message) {
    const toolkit::CControlUI* clicked = message.pSender;
    EditorWindow::OnClick(message);
    // A button that was clicked would keep letters and Space from the picture, and nobody sees it.
    toolkit::CPaintManagerUI& manager = GetPaintManager();
    if (manager.takesInput() && manager.GetFocus() == clicked &&
        !manager.focusKeeper().isKeyboardUse()) {
        manager.SetFocus(nullptr);
    }
}

void ZoneEdit::OnItemActivate(toolkit::TNotifyUI& message) {
    if (m_panel && message.pSender->GetName() == kZonesList) {
        m_panel->startRename();
    }
}

void ZoneEdit::OnItemSelect(toolkit::TNotifyUI& message) {
    if (m_zones && message.pSender->GetName() == kZoneCombo) {
        m_zones->choose();
        if (m_timeline) {
            m_timeline->showZone();
        }
        m_panel->refresh();
        if (m_editing) {
            m_editing->shown();
        }
    } else if (m_panel && message.pSender->GetName() == kZonesList) {
        m_panel->choose();
    } else if (m_zoom && message.pSender->GetName() == kZoomCombo) {
        m_zoom->choose();
    }
}

void ZoneEdit::OnSelectChanged(toolkit::TNotifyUI& message) {
    if (m_editing && !m_editing->choose(message.pSender->GetName())) {
        m_flags->change(*message.pSender) || m_panel->press(*message.pSender);
    }
}

void ZoneEdit::OnKillFocus(toolkit::TNotifyUI& message) {
    if (m_zones && message.pSender->GetName() == kZoneEdit) {
        m_zones->rename();
    } else if (m_panel && message.pSender->GetName() == kRowEdit) {
        m_panel->endRename(true);
    } else if (m_editing && m_editing->typed(message.pSender->GetName())) {
        return;
    } else if (m_frames && message.pSender->GetName() == kFrameEdit) {
        m_frames->goToTyped();
    } else if (m_range) {
        m_range->typed(message.pSender->GetName());
    }
}

bool ZoneEdit::MessageHandler(const platform::Event& event) {
    if (m_player && event.kind == platform::EventKind::mouseDown && m_video.shows(event.position)) {
        m_player->pause(); // what the press does is done on the frame that the author saw
    }
    return (m_zoom && m_zoom->handle(event)) || chooseByTag(event) ||
           (m_editing && m_editing->handle(event)) || EditorWindow::MessageHandler(event);
}

bool ZoneEdit::HandleMessage(const platform::Event& event) {
    // A question's loop runs inside this window's: the question has to end first.
    if (event.kind == platform::EventKind::closeRequest && isAsking()) {
        return true;
    }
    if (event.kind == platform::EventKind::timer && event.timerId == PlayPresenter::kTimer) {
        m_player->tick();
        return true;
    }
    if (event.kind == platform::EventKind::timer && event.timerId == NoticePresenter::kTimer) {
        m_notice->timeIsUp();
        return true;
    }
    if (event.kind == platform::EventKind::timer && event.timerId == HintPresenter::kTimer) {
        m_editing->hints().timeIsUp();
        return true;
    }
    return EditorWindow::HandleMessage(event);
}

void ZoneEdit::windowSized() {
    if (m_toggles) {
        m_toggles->windowSized();
    }
    if (m_header) { // the caption may have room for what the bar says, or no more
        GetPaintManager().UpdateLayout();
        m_editing->barsChanged();
        m_zoom->windowSized();
        m_editing->hints().windowSized();
        m_header->showAll();
    }
}

void ZoneEdit::stop() {
    const ui::Controls controls(GetPaintManager());
    const bool wasTyping = (controls.hasFocus(kFrameEdit) && m_frames->restoreText()) ||
                           (controls.hasFocus(kZoneEdit) && m_zones->restoreText()) ||
                           (controls.hasFocus(kRowEdit) && m_panel->endRename(false)) ||
                           m_range->restoreText() || m_editing->restoreText();
    if (wasTyping || m_editing->cancelDrag()) {
        return;
    }
    if (m_notice->isShown()) {
        m_notice->close();
    } else if (m_follow && m_follow->isRunning()) {
        m_follow->stop();
    } else if ((!m_follow || !m_follow->discard()) && !m_editing->endAdding()) {
        m_selection->clear();
    }
}

void ZoneEdit::removeZone() {
    if (!m_zones->canRemove()) {
        return;
    }
    SetAnswer(kNo);
    ui::Confirmation::ask(
        context(), *this, core::trStored("RemoveZoneQuestion|Remove Zone?"_tr),
        core::trStored("RemoveZoneSure|Are you sure you want to remove the zone?"_tr));
    if (answer() == kYes) {
        remove();
    }
}

void ZoneEdit::saveZones() {
    if (m_loaded) {
        m_header->save();
        if (m_session->zones().lastSaveFailure().empty()) {
            m_result.renamedZones = m_renamed->in(m_session->zones());
        }
    }
}

void ZoneEdit::showVersions() {
    m_session->endGesture();
    ui::EarlierVersions::show(
        context(), *this, zoneHistory(*m_session, context().state.zoneEditVideo, versionsFolder()));
}

void ZoneEdit::closeEditor() {
    // A dismissed question counts as yes. Intended.
    SetAnswer(kYes);
    ui::Confirmation::ask(context(), *this, core::trStored("CloseQuestion|Close?"_tr),
                          core::trStored("Are you sure you want to close Zone Edit?"_tr));
    if (answer() == kYes) {
        Close(1);
    }
}

} // namespace zoneedit
