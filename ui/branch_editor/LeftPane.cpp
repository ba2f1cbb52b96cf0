#include "ui/branch_editor/LeftPane.h"

#include <string>
#include <string_view>
#include <utility>

#include "core/EditorSettings.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/CSplitterUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/Fonts.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/preview/PreviewNames.h"

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

bool LeftPane::isWide() const {
    return m_controls.manager().GetWindowSize().width >= kWide;
}

bool LeftPane::isShown() const {
    return isWide() ? m_isWanted : m_isInPlace;
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

void LeftPane::showPage(Page page) {
    m_page = page;
    show(true);
}

bool LeftPane::putInPlace(Page page) {
    if (isWide() || m_isInPlace) {
        return false;
    }
    showPage(page);
    return true;
}

void LeftPane::turnPage() {
    const auto* map = m_controls.find<toolkit::COptionUI>(kMapTab);
    m_page = map == nullptr || map->IsSelected() ? Page::map : Page::preview;
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
    const bool isMap = m_page == Page::map;
    m_controls.setVisible(kMapPage, isMap);
    m_controls.setVisible(kPreviewPage, !isMap);
    for (const std::u16string_view tool :
         {kFindPane, kZoomOutButton, kZoomInButton, kFitButton}) { // the head shows the zoom
        m_controls.setVisible(tool, isMap);
    }
    for (const std::u16string_view tool : {kPreviewNote, kPreviewStop}) {
        m_controls.setVisible(tool, !isMap);
    }
    for (const auto& [name, isChosen] : {std::pair(kMapTab, isMap), {kPreviewTab, !isMap}}) {
        if (auto* tab = m_controls.find<toolkit::COptionUI>(name)) {
            tab->SetFont(isChosen ? font::kBold : font::kBody);
            if (isChosen) {
                tab->Selected(true);
            }
        }
    }
    if (auto* button = m_controls.find<toolkit::COptionUI>(kMapButton)) {
        button->Selected(this->isShown(Page::map));
    }
}

void LeftPane::keepWidths() const {
    const auto* splitter = m_controls.find<toolkit::CSplitterUI>(kColumnSplitter);
    if (splitter != nullptr && m_settings != nullptr) {
        m_settings->set(kColumnKey, std::to_string(splitter->GetLength()));
    }
}

} // namespace ui
