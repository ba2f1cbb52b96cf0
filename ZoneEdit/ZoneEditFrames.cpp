#include <algorithm>
#include <optional>

#include "ZoneEdit/ZoneEdit.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/Text.h"
#include "toolkit/controls/COptionUI.h"
#include "video/CVideoUI.h"
#include "zone/ZoneManager.h"

namespace zoneedit {

using video::CVideoUI;

void ZoneEdit::stepBack() {
    step(&CVideoUI::PrevFrame);
}

void ZoneEdit::stepBackTen() {
    step(&CVideoUI::PrevTenFrames);
}

void ZoneEdit::stepForward() {
    step(&CVideoUI::NextFrame);
}

void ZoneEdit::stepForwardTen() {
    step(&CVideoUI::NextTenFrames);
}

void ZoneEdit::step(void (CVideoUI::*move)()) {
    if (CVideoUI* control = checkedVideo(kStepLine)) {
        (control->*move)();
        showNotice({});
        showFrame();
        repaintDueFrame();
    }
}

void ZoneEdit::repaintDueFrame() {
    // One that is decoded already need not wait for the system's next paint.
    video::Video* video = loadedVideo();
    if (video != nullptr && video->hasDueFrame()) {
        repaintVideoNow();
    }
}

void ZoneEdit::goToTypedFrame(Control& sender) {
    CVideoUI* control = checkedVideo(kTypedFrameLine);
    const video::Video* video = loadedVideo();
    if (control == nullptr || video == nullptr) {
        return;
    }
    const std::optional<int> target =
        frameFrom(sender.GetText(), std::max(video->frameCount - 1, 0));
    showNotice(target ? std::u16string_view() : kNoFrameNumber);
    if (target && *target != video->currentFrame) {
        control->GoToFrame(*target);
    }
    showFrame();
    repaintDueFrame();
}

std::u16string ZoneEdit::frameText() const {
    return core::displayText(std::to_string(std::max(currentFrame(), 0)));
}

void ZoneEdit::showFrame() {
    setTextOf(kFrameEdit, frameText());
    showActive();
}

void ZoneEdit::restoreText() {
    Control* focus = GetPaintManager().GetFocus();
    if (focus != nullptr && focus->GetName() == kFrameEdit) {
        focus->SetText(frameText());
    } else if (focus != nullptr && focus->GetName() == kZoneEdit) {
        focus->SetText(m_shownName);
    }
}

void ZoneEdit::showActive() {
    auto* option = find<toolkit::COptionUI>(kActiveOption);
    if (option == nullptr) {
        return;
    }
    const int zone = selectedZone();
    const int frame = currentFrame();
    option->Selected(zone >= 0 && frame >= 0 && m_zones->isActive(zone, frame));
    option->Invalidate();
}

void ZoneEdit::changeActive(Control& sender) {
    const auto* option = toolkit::controlCast<toolkit::COptionUI>(&sender);
    const int zone = selectedZone();
    const int frame = currentFrame();
    if (option == nullptr) {
        return;
    }
    if (zone < 0 || frame < 0) {
        showActive();
        return;
    }
    // Setting what is set already would still spread over all later frames.
    if (m_zones->isActive(zone, frame) != option->IsSelected()) {
        m_zones->setActive(*m_editing, zone, frame, option->IsSelected());
        noteEdit();
        repaintVideo();
    }
}

void ZoneEdit::changeProgress(Control& sender) {
    const auto* option = toolkit::controlCast<toolkit::COptionUI>(&sender);
    if (option != nullptr) {
        m_editing->progressChanges = option->IsSelected();
    }
}

} // namespace zoneedit
