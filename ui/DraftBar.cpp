#include "ui/DraftBar.h"

#include <algorithm>
#include <string_view>

#include "recovery/DraftInfo.h"
#include "recovery/SceneDraft.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/DraftTexts.h"

namespace ui {
namespace {

constexpr std::u16string_view kPanel = u"PanelDraft";
constexpr std::u16string_view kLabel = u"LabelDraft";

} // namespace

DraftBar::DraftBar(const Controls& controls, app_state::ScreenState& state)
    : m_controls(controls), m_state(state), m_drafts(recovery::keptSceneDrafts()) {
    std::erase_if(m_drafts,
                  [&](const auto& draft) { return draft.folder == m_state.unreadableDraft; });
}

void DraftBar::show(const std::string& scene) {
    const auto own = std::find_if(m_drafts.begin(), m_drafts.end(),
                                  [&](const auto& draft) { return draft.info.listedAs == scene; });
    const auto draft = own != m_drafts.end() ? own : m_drafts.begin();
    m_offered = m_state.draftsHidden || m_drafts.empty() ? nullptr : &*draft;
    if (m_offered != nullptr) {
        const recovery::DraftInfo& info = m_offered->info;
        const std::u16string text =
            draftText(info.scene, info.time, recovery::isSceneSavedSince(info));
        m_controls.setText(kLabel, text);
        if (toolkit::CControlUI* label = m_controls.find(kLabel)) {
            label->SetToolTip(text); // for one that does not fit
        }
    }
    m_controls.setVisible(kPanel, m_offered != nullptr);
}

void DraftBar::hide() {
    m_state.draftsHidden = true;
    m_offered = nullptr;
    m_controls.setVisible(kPanel, false);
}

} // namespace ui
