#include "ui/branch_editor/VideoPresenter.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/Paths.h"
#include "core/Text.h"
#include "scene/SceneChange.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "ui/SceneHints.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/branch_editor/FlagScope.h"
#include "zone/ZoneManager.h"

namespace ui {

using namespace branch_list;

namespace {

NameList zoneNames(const zone::ZoneManager& zones) {
    std::vector<std::string> names;
    for (int index = 0; index < zones.zoneCount(); ++index) {
        names.push_back(zones.getZoneName(index));
    }
    return NameList(std::move(names));
}

} // namespace

VideoPresenter::VideoPresenter(Controls controls, scene::SceneSession& session, std::string folder,
                               Listener& listener)
    : m_controls(controls), m_session(session), m_folder(std::move(folder)), m_listener(listener),
      m_subscription(session.observe([this](const auto& changes) { changed(changes); })) {}

void VideoPresenter::fill() {
    for (int branch = 0; branch < m_session.branchCount(); ++branch) {
        const std::string name = m_session.video(branch);
        if (isListed(name)) {
            continue;
        }
        addItem(name);
        const std::string base = core::withoutExtension(m_folder + name);
        if (const auto zones = zone::ZoneManager::create(base, 0, false)) {
            m_zones[name] = zoneNames(*zones);
        }
    }
}

bool VideoPresenter::isListed(const std::string& name) const {
    return indexOfText(m_videos, name) >= 0;
}

bool VideoPresenter::addItem(const std::string& name) {
    auto* combo = m_controls.find<toolkit::CComboUI>(kVideoCombo);
    if (combo == nullptr) {
        return false;
    }
    auto item = std::make_unique<toolkit::CListLabelElementUI>();
    item->SetText(core::displayText(name));
    combo->Add(std::move(item));
    m_videos.push_back(name);
    return true;
}

void VideoPresenter::removeItem(const std::string& name) {
    auto* combo = m_controls.find<toolkit::CComboUI>(kVideoCombo);
    const int index = indexOfText(m_videos, name);
    if (combo != nullptr && index >= 0) {
        combo->RemoveAt(index);
        m_videos.erase(m_videos.begin() + index);
    }
}

int VideoPresenter::selected() const {
    const auto* combo = m_controls.find<toolkit::CComboUI>(kVideoCombo);
    return combo != nullptr ? combo->GetCurSel() : -1;
}

std::string VideoPresenter::shownName() const {
    const auto* combo = m_controls.find<toolkit::CComboUI>(kVideoCombo);
    return combo != nullptr && combo->GetCurSel() >= 0
               ? storedChoice(m_videos, combo->GetCurSel(), combo->GetText())
               : std::string();
}

void VideoPresenter::show(int branch) {
    m_branch = branch;
    auto* combo = m_controls.find<toolkit::CComboUI>(kVideoCombo);
    const std::string own = branch >= 0 ? m_session.video(branch) : std::string();
    if (combo != nullptr && !own.empty()) {
        combo->SelectItem(indexOfText(m_videos, own));
    }
    if (combo != nullptr) {
        combo->Invalidate();
    }
    readShownZones();
    showOwnVideo();
}

void VideoPresenter::choose() {
    if (selected() < 0 || m_branch < 0) {
        return;
    }
    {
        const FlagScope own(m_isOwnEdit);
        m_session.setVideo(m_branch, shownName());
    }
    readShownZones();
    showOwnVideo();
    m_listener.zonesShown(true);
}

void VideoPresenter::changed(const scene::SceneSession::Changes& changes) {
    const scene::SceneChange ours{scene::SceneChange::Part::video, m_branch};
    if (!m_isOwnEdit && std::find(changes.begin(), changes.end(), ours) != changes.end()) {
        show(m_branch);
        m_listener.zonesShown(false);
    }
}

void VideoPresenter::readShownZones() {
    const std::string name = shownName();
    const auto found = m_zones.find(name);
    m_shownZones = !name.empty() && found != m_zones.end() ? found->second : NameList();
}

bool VideoPresenter::lacksZones() const {
    return selected() >= 0 && m_shownZones.stored.empty();
}

void VideoPresenter::showOwnVideo() {
    const std::string own = m_branch >= 0 ? m_session.video(m_branch) : std::string();
    const bool differs = m_branch >= 0 && (own.empty() || selected() < 0 || shownName() != own);
    m_controls.setText(kOwnVideo, ownVideoText(own));
    m_controls.setVisible(kOwnVideo, differs);
    m_controls.setVisible(kZonesHint, !differs);
}

std::string VideoPresenter::videoToEdit() const {
    // The video's place in its list picks a branch, whose video is taken. Where the two lists are
    // ordered differently this is another video than the one shown. Intended.
    const std::string name = m_session.video(selected());
    return name.empty() ? name : m_folder + name;
}

} // namespace ui
