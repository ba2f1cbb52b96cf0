#include "ui/branch_editor/LeftPane.h"

#include <string>

#include "core/EditorSettings.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CSplitterUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/branch_editor/ControlNames.h"

namespace ui {

using namespace branch_list;

namespace {

constexpr int kWide = 1240;
constexpr int kMostWidth = 8192;
constexpr const char* kShownKey = "leftPane";
constexpr const char* kColumnKey = "columnWidth";

} // namespace

LeftPane::LeftPane(Controls controls, core::EditorSettings* settings)
    : m_controls(controls), m_settings(settings),
      m_isWanted(settings == nullptr || settings->getBool(kShownKey, true)) {
    auto* splitter = m_controls.find<toolkit::CSplitterUI>(kColumnSplitter);
    if (splitter != nullptr && m_settings != nullptr) {
        splitter->SetLength(m_settings->getInt(kColumnKey, 0, 0, kMostWidth));
    }
    arrange();
}

bool LeftPane::isFilled() const {
    const toolkit::CControlUI* pane = m_controls.find(kLeftPane);
    return pane != nullptr && pane->childCount() > 0;
}

bool LeftPane::isWide() const {
    return m_controls.manager().GetWindowSize().width >= kWide;
}

bool LeftPane::isShown() const {
    return isFilled() && (isWide() ? m_isWanted : m_isInPlace);
}

void LeftPane::show(bool shown) {
    if (!isWide()) {
        m_isInPlace = shown;
    } else if (m_isWanted != shown) {
        m_isWanted = shown;
        if (m_settings != nullptr) {
            m_settings->set(kShownKey, shown ? "true" : "false");
        }
    }
    arrange();
}

void LeftPane::leave() {
    if (!isWide()) {
        show(false);
    }
}

void LeftPane::arrange() {
    if (isWide()) {
        m_isInPlace = false;
    }
    const bool isShown = this->isShown();
    m_controls.setVisible(kLeftPane, isShown);
    m_controls.setVisible(kColumn, !isShown || isWide());
    m_controls.setVisible(kColumnSplitter, isShown && isWide());
    m_controls.setVisible(kSpaceLeft, !isShown);
    m_controls.setVisible(kSpaceRight, !isShown);
}

void LeftPane::keepWidths() const {
    const auto* splitter = m_controls.find<toolkit::CSplitterUI>(kColumnSplitter);
    if (splitter != nullptr && m_settings != nullptr) {
        m_settings->set(kColumnKey, std::to_string(splitter->GetLength()));
    }
}

} // namespace ui
