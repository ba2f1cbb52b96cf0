#include "ZoneEdit/ZoneEdit.h"

#include <string>
#include <string_view>

#include "ZoneEdit/DraftPresenter.h"
#include "ZoneEdit/EditingParts.h"
#include "ZoneEdit/FollowPresenter.h"
#include "ZoneEdit/FramesPresenter.h"
#include "ZoneEdit/HeaderPresenter.h"
#include "ZoneEdit/HintPresenter.h"
#include "ZoneEdit/HistoryPresenter.h"
#include "ZoneEdit/Loupe.h"
#include "ZoneEdit/NoticePresenter.h"
#include "ZoneEdit/Overview.h"
#include "ZoneEdit/RenamedZones.h"
#include "ZoneEdit/TimeParts.h"
#include "ZoneEdit/Timeline.h"
#include "ZoneEdit/ViewParts.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneOpening.h"
#include "ZoneEdit/ZoneParts.h"
#include "ZoneEdit/ZonesPresenter.h"
#include "app/state/SharedServices.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Texts.h"
#include "edit/Announcements.h"
#include "platform/Event.h"
#include "platform/EventLoop.h"
#include "platform/Gui.h"
#include "recovery/Backups.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "toolkit/window/Notification.h"
#include "ui/WindowContext.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ContextMenu.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "video/CVideoUI.h"
#include "zone/EditContext.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

namespace {

constexpr ui::ContextMenu kContextMenus[] = {{kZoneCombo, ui::kZoneRows},
                                             {kZoneEdit, ui::kZoneRows}};
constexpr std::u16string_view kPanes[] = {kNoticePanel, kToolOptions[0]};
constexpr int kFullScreenHeight = 860;
constexpr platform::Size kFullSize{1280, 720};
constexpr platform::Size kSmallSize{1024, 600};

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
    m_editing->showAll();
    m_time->showAll();
    m_view->showAll();
    if (context().state.zoneEditResumes) {
        resume();
    }
    // Its offer comes after what the caption has to say, which it stands in front of.
    if (m_loaded) {
        m_draft->keep(context().state.zoneEditVideo);
    }
    commands().showEnabled();
}

void ZoneEdit::resume() {
    const auto& places = context().state.zonePlaces;
    const auto place = places.find(context().state.zoneEditVideo);
    if (m_loaded && place != places.end()) {
        const auto& [frame, zone] = place->second;
        if (zone >= 0 && zone < m_session->zones().zoneCount()) {
            m_zones->list().show(zone);
        }
        if (frame > 0 && frame < m_video.frameCount()) {
            m_time->frames().show(frame);
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
    const std::string& path = context().state.zoneEditVideo;
    if (!m_video.control()->LoadVideo(path)) {
        return false;
    }
    const std::shared_ptr<zone::ZoneManager> zones = openZones(
        m_video, path, m_displaySize, [folder = versionsFolder()] { return folder; },
        context().services.editorSettings);
    if (!zones) {
        return false;
    }
    m_session = std::make_shared<zone::ZoneSession>(zones);
    m_session->setArea(m_displaySize);
    m_renamed = std::make_unique<RenamedZones>(*zones);
    m_video.control()->NeedUpdate(); // laid out without a video, it has no buffer for frames yet
    return true;
}

std::string ZoneEdit::versionsFolder() const {
    const auto& scene = context().services.sceneManager;
    return recovery::zoneVersionsFolder(scene ? scene->Name() : std::string(),
                                        core::fileTitle(context().state.zoneEditVideo));
}

void ZoneEdit::frameShown() {
    m_zones->frameShown();
    if (m_editing) {
        m_editing->shown();
    }
}

void ZoneEdit::zoneShown() {
    m_time->zoneShown();
    m_editing->shown();
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
    if (m_zones) {
        m_zones->activate(message.pSender->GetName());
    }
}

void ZoneEdit::OnItemSelect(toolkit::TNotifyUI& message) {
    const std::u16string& list = message.pSender->GetName();
    if (isReady() && !m_zones->choose(list)) {
        m_view->choose(list);
    }
}

void ZoneEdit::OnSelectChanged(toolkit::TNotifyUI& message) {
    if (isReady() && !m_editing->choose(message.pSender->GetName())) {
        m_zones->press(*message.pSender);
    }
}

void ZoneEdit::OnKillFocus(toolkit::TNotifyUI& message) {
    const std::u16string& field = message.pSender->GetName();
    if (isReady() && !m_zones->typed(field) && !m_editing->typed(field)) {
        m_time->typed(field);
    }
}

bool ZoneEdit::MessageHandler(const platform::Event& event) {
    if (!isReady()) {
        return EditorWindow::MessageHandler(event);
    }
    if (m_view->handle(event)) { // another part of the picture: the clip may go on playing
        return true;
    }
    m_time->note(event);
    return m_zones->handle(event) || m_editing->handle(event) ||
           EditorWindow::MessageHandler(event);
}

bool ZoneEdit::HandleMessage(const platform::Event& event) {
    // A question's loop runs inside this window's: the question has to end first.
    if (event.kind == platform::EventKind::closeRequest && isAsking()) {
        return true;
    }
    const bool isHandled =
        isReady() && event.kind == platform::EventKind::timer &&
        (m_time->handle(event) || m_notice->timeIsUp(event.timerId) ||
         m_header->timeIsUp(event.timerId) || m_editing->hints().timeIsUp(event.timerId));
    return isHandled || EditorWindow::HandleMessage(event);
}

void ZoneEdit::windowSized() {
    if (isReady()) {
        m_view->chooseParts();
        GetPaintManager().UpdateLayout(); // the caption may have room for what the bar says, or not
        m_editing->barsChanged();
        m_view->windowSized();
        m_editing->hints().windowSized();
        m_header->showAll();
    }
}

} // namespace zoneedit
