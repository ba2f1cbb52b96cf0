#include "ZoneEdit/EditedVideo.h"

#include "core/Log.h"
#include "platform/Window.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "video/Video.h"

namespace zoneedit {

video::CVideoUI* EditedVideo::checkedControl(int line) const {
    if (m_control == nullptr) {
        core::Log::get()->Error("%s:%d VideoUI is invalid", "..\\ZoneEdit\\ZoneEdit.cpp", line);
    }
    return m_control;
}

video::Video* EditedVideo::video() const {
    return m_control != nullptr ? m_control->video().get() : nullptr;
}

int EditedVideo::frameCount() const {
    const video::Video* video = this->video();
    return video != nullptr ? video->frameCount : 0;
}

int EditedVideo::frame() const {
    const video::Video* video = this->video();
    return video != nullptr ? video->currentFrame : 0;
}

double EditedVideo::framesPerSecond() const {
    const video::Video* video = this->video();
    return video != nullptr && video->framesPerSecond > 0 ? video->framesPerSecond : 1;
}

bool EditedVideo::shows(platform::Point at) const {
    return m_control != nullptr && m_control->pictureRect().contains(at);
}

bool EditedVideo::isWaiting() const {
    const video::Video* video = this->video();
    return video != nullptr && video->shownFrame != video->currentFrame;
}

platform::Size EditedVideo::size() const {
    const video::Video* video = this->video();
    return video != nullptr ? platform::Size{video->width, video->height} : platform::Size{};
}

void EditedVideo::showPlayed(int frame, const std::uint8_t* pixels, platform::Size size) const {
    if (m_control != nullptr) {
        m_control->ShowPlayed(frame, pixels, size);
    }
}

void EditedVideo::endPlayed() const {
    if (video::Video* video = this->video()) {
        video->seekTo(video->currentFrame);
    }
}

void EditedVideo::repaintZone() const {
    if (m_control != nullptr) {
        m_control->InvalidateLayers();
    }
}

void EditedVideo::repaintZoneNow() const {
    repaintZone();
    paintNow();
}

void EditedVideo::repaintDueFrame() const {
    video::Video* video = this->video();
    if (video != nullptr && video->hasDueFrame()) {
        m_control->Invalidate();
        paintNow();
    }
}

void EditedVideo::paintNow() const {
    const auto* manager = m_control != nullptr ? m_control->GetManager() : nullptr;
    if (manager != nullptr && manager->GetWindow() != nullptr) {
        manager->GetWindow()->picture().repaintNow();
    }
}

} // namespace zoneedit
