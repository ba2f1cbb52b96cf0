#include "ZoneEdit/ZoneEdit.h"

#include "ZoneEdit/CurrentZones.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZonesLayer.h"
#include "core/Log.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "platform/Window.h"
#include "toolkit/controls/COptionUI.h"
#include "ui/commands/ZoneEditorCommands.h"
#include "video/CVideoUI.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

namespace {

constexpr int kFullScreenHeight = 860;
constexpr platform::Size kFullSize{1280, 720};
constexpr platform::Size kSmallSize{1024, 600};
constexpr int kNumberFont = 3;

} // namespace

std::shared_ptr<ZoneEdit> ZoneEdit::create(const ui::WindowContext& context) {
    return std::make_shared<ZoneEdit>(context);
}

ZoneEdit::ZoneEdit(const ui::WindowContext& context)
    : EditorWindow(context, ui::kZoneEditorCommands),
      m_displaySize(context.gui.windows().primaryScreenHeight() >= kFullScreenHeight ? kFullSize
                                                                                     : kSmallSize) {
    namespace command = ui::command;
    static constexpr ui::CommandHandler<ZoneEdit> kHandlers[] = {
        {command::kSave, &ZoneEdit::saveZones},
        {command::kClose, &ZoneEdit::closeEditor},
        {command::kAddZone, &ZoneEdit::addZone},
        {command::kRemoveZone, &ZoneEdit::removeZone},
        {command::kStop, &ZoneEdit::restoreText},
        {command::kBackTen, &ZoneEdit::stepBackTen},
        {command::kBack, &ZoneEdit::stepBack},
        {command::kForward, &ZoneEdit::stepForward},
        {command::kForwardTen, &ZoneEdit::stepForwardTen},
    };
    commands().bindAll(*this, kHandlers);
}

bool ZoneEdit::run() {
    return runScreen(u"Zone Edit");
}

std::string ZoneEdit::GetSkinFile() const {
    return m_displaySize == kFullSize ? "ZoneEdit.xml" : "ZoneEditSmall.xml";
}

std::unique_ptr<toolkit::CControlUI> ZoneEdit::CreateControl(std::u16string_view className) {
    if (className != kVideo) {
        return EditorWindow::CreateControl(className);
    }
    auto control = std::make_unique<video::CVideoUI>(context().gui.loop());
    m_video = control.get();
    const std::string& path = context().state.zoneEditVideo;
    if (!path.empty()) {
        m_loaded = loadVideo();
        if (!m_loaded) {
            core::Log::get()->Error("Unable to load video %s", path.c_str());
            m_result.unreadableVideo = path;
            postClose();
        }
    }
    return control;
}

bool ZoneEdit::loadVideo() {
    return m_video->LoadVideo(context().state.zoneEditVideo) && makeZoneManager();
}

bool ZoneEdit::makeZoneManager() {
    const std::string base = core::withoutExtension(context().state.zoneEditVideo);
    // A video that does not tell its length must not cut what was stored for it.
    const int frames = loadedVideo()->frameCount;
    m_zones = zone::ZoneManager::createForEditing(
        base, frames < 1 ? zone::kStoredFrameCount : frames, scale());
    if (!m_zones) {
        core::Log::get()->Error("Unable to create zone manager interface");
        return false;
    }
    m_zones->scale = scale();
    m_editing->currentZone = m_zones->lastZoneRead;
    setCurrentZoneManager(m_zones);
    const zone::NumberFont font{GetPaintManager().GetFont(kNumberFont), &context().gui.fonts()};
    m_video->AddLayer(std::make_shared<ZonesLayer>(m_zones, m_editing, font));
    return true;
}

std::optional<zone::Scale> ZoneEdit::scale() const {
    const video::Video& video = *loadedVideo();
    return zone::scaleBetween(m_displaySize, {video.width, video.height});
}

void ZoneEdit::postClose() {
    // The layout is still being built: the window goes once its loop runs.
    context().gui.loop().post([window = weak_from_this()] {
        if (const auto self = window.lock()) {
            self->Close(1);
        }
    });
}

video::CVideoUI* ZoneEdit::checkedVideo(int line) const {
    if (m_video == nullptr) {
        core::Log::get()->Error("%s:%d VideoUI is invalid", "..\\ZoneEdit\\ZoneEdit.cpp", line);
    }
    return m_video;
}

video::Video* ZoneEdit::loadedVideo() const {
    return m_video != nullptr ? m_video->video().get() : nullptr;
}

bool ZoneEdit::hasFrames() const {
    const video::Video* video = loadedVideo();
    return video != nullptr && video->frameCount > 0;
}

int ZoneEdit::currentFrame() const {
    const video::Video* video = loadedVideo();
    return video != nullptr ? video->currentFrame : 0;
}

void ZoneEdit::repaintVideo() {
    if (m_video != nullptr) {
        m_video->Invalidate();
    }
}

void ZoneEdit::repaintVideoNow() {
    repaintVideo();
    if (platform::NativeWindow* window = GetNative()) {
        window->repaintNow();
    }
}

void ZoneEdit::InitWindow() {
    showCaption();
    const video::Video* video = loadedVideo();
    const int last = video != nullptr ? video->frameCount - 1 : 0;
    setTextOf(kTotalEdit, core::displayText(std::to_string(last < 0 ? 0 : last)));
    if (m_zones) {
        const platform::Size picture = m_video->GetPos().size();
        m_zones->videoWidth = picture.width;
        m_zones->videoHeight = picture.height;
        fillZones(m_editing->currentZone);
        if (auto* progress = find<toolkit::COptionUI>(kProgressOption)) {
            progress->Selected(m_editing->progressChanges);
        }
    }
    selectTool(Tool::movePoint);
    showFrame();
    updateEnabled();
}

void ZoneEdit::OnItemSelect(toolkit::TNotifyUI& message) {
    static constexpr ui::ControlHandler<ZoneEdit> kHandlers[] = {
        {kZoneCombo, &ZoneEdit::chooseZone},
    };
    ui::dispatch(*this, kHandlers, message);
}

void ZoneEdit::OnSelectChanged(toolkit::TNotifyUI& message) {
    static constexpr ui::ControlHandler<ZoneEdit> kHandlers[] = {
        {kToolOptions[0], &ZoneEdit::chooseTool}, {kToolOptions[1], &ZoneEdit::chooseTool},
        {kToolOptions[2], &ZoneEdit::chooseTool}, {kToolOptions[3], &ZoneEdit::chooseTool},
        {kActiveOption, &ZoneEdit::changeActive}, {kProgressOption, &ZoneEdit::changeProgress},
    };
    ui::dispatch(*this, kHandlers, message);
}

void ZoneEdit::OnKillFocus(toolkit::TNotifyUI& message) {
    static constexpr ui::ControlHandler<ZoneEdit> kHandlers[] = {
        {kZoneEdit, &ZoneEdit::renameZone},
        {kFrameEdit, &ZoneEdit::goToTypedFrame},
    };
    ui::dispatch(*this, kHandlers, message);
}

bool ZoneEdit::MessageHandler(const platform::Event& event) {
    return handleMouse(event) || EditorWindow::MessageHandler(event);
}

bool ZoneEdit::HandleMessage(const platform::Event& event) {
    // A question's loop runs inside this window's: the question has to end first.
    if (event.kind == platform::EventKind::closeRequest && isAsking()) {
        return true;
    }
    return EditorWindow::HandleMessage(event);
}

} // namespace zoneedit
