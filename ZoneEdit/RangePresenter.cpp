#include "ZoneEdit/RangePresenter.h"

#include <optional>
#include <string>

#include "ZoneEdit/HeaderPresenter.h"
#include "ZoneEdit/ZoneEditControls.h"
#include "ZoneEdit/ZoneTexts.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "toolkit/controls/CControlUI.h"

namespace zoneedit {

RangePresenter::RangePresenter(ui::Controls controls, EditedVideo& video, FrameSelection& selection,
                               HeaderPresenter& header)
    : m_controls(controls), m_video(video), m_selection(selection), m_header(header),
      m_changes(selection.observe([this] { show(); })) {}

void RangePresenter::show() {
    const std::optional<FrameSpan>& span = m_selection.span();
    const auto text = [&span](int FrameSpan::*end) {
        return span ? core::displayText(std::to_string((*span).*end)) : std::u16string();
    };
    m_controls.setText(kRangeFromEdit, text(&FrameSpan::first));
    m_controls.setText(kRangeToEdit, text(&FrameSpan::last));
}

bool RangePresenter::typed(std::u16string_view field) {
    const bool isBegin = field == kRangeFromEdit;
    if (!isBegin && field != kRangeToEdit) {
        return false;
    }
    const toolkit::CControlUI* edit = m_controls.find(field);
    if (edit != nullptr && m_video.hasFrames()) {
        const std::u16string text = edit->GetText();
        const std::optional<int> frame =
            text.empty() ? std::nullopt : frameFrom(text, m_video.frameCount() - 1);
        if (frame) {
            isBegin ? m_selection.beginAt(*frame) : m_selection.endAt(*frame);
        } else if (text.empty()) {
            m_selection.clear();
        } else {
            m_header.showNotice(core::tr(kNoFrameNumber));
        }
    }
    show();
    return true;
}

bool RangePresenter::restoreText() {
    for (const std::u16string_view field : {kRangeFromEdit, kRangeToEdit}) {
        if (m_controls.hasFocus(field)) {
            const std::u16string typed = m_controls.find(field)->GetText();
            show();
            return m_controls.find(field)->GetText() != typed;
        }
    }
    return false;
}

} // namespace zoneedit
