#include "ui/branch_editor/VideoPresenter.h"

#include <cstddef>
#include <memory>
#include <utility>

#include "core/Paths.h"
#include "core/Text.h"
#include "scene/SceneChange.h"
#include "scene/SceneManager.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "ui/FlagScope.h"
#include "ui/SceneHints.h"
#include "ui/branch_editor/ActionValues.h"
#include "ui/branch_editor/ControlNames.h"
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
        list(m_session.video(branch));
    }
    m_added = m_session.scene().addedVideos();
    for (const std::string& name : m_added) {
        list(name);
    }
}

void VideoPresenter::list(const std::string& name) {
    if (isListed(name)) {
        return;
    }
    addItem(name);
    const std::string base = core::withoutExtension(m_folder + name);
    if (const auto zones = zone::ZoneManager::create(base, 0, false)) {
        m_zones[name] = zoneNames(*zones);
    }
}

bool VideoPresenter::listMissing() {
    const std::size_t before = m_videos.size();
    for (int branch = 0; branch < m_session.branchCount(); ++branch) {
        const std::string name = m_session.video(branch);
        if (!name.empty()) {
            list(name);
        }
    }
    return m_videos.size() > before;
}

void VideoPresenter::matchAdded() {
    const std::vector<std::string>& now = m_session.scene().addedVideos();
    for (const std::string& name : std::exchange(m_added, now)) {
        if (indexOfText(now, name) < 0) {
            removeItem(name);
        }
    }
    for (const std::string& name : now) {
        list(name);
    }
    showOwnVideo();
}

bool VideoPresenter::isListed(const std::string& name) const {
    return m_listed.contains(name);
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
    m_listed.insert(name);
    return true;
}

void VideoPresenter::removeItem(const std::string& name) {
    auto* combo = m_controls.find<toolkit::CComboUI>(kVideoCombo);
    const int index = indexOfText(m_videos, name);
    if (combo != nullptr && index >= 0) {
        combo->RemoveAt(index);
        m_videos.erase(m_videos.begin() + index);
        m_listed.erase(name);
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
    const std::string own = ownVideo();
    if (combo != nullptr && !own.empty()) {
        const FlagScope showing(m_isShowing);
        combo->SelectItem(indexOfText(m_videos, own));
    }
    if (combo != nullptr) {
        combo->Invalidate();
    }
    readShownZones();
    showOwnVideo();
}

void VideoPresenter::choose() {
    if (selected() < 0 || m_branch < 0 || m_isShowing) {
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
    using Part = scene::SceneChange::Part;
    if (m_isOwnEdit) {
        return;
    }
    bool isOurs = false;
    bool mayMiss = false;
    for (const scene::SceneChange& change : changes) {
        isOurs = isOurs || change == scene::SceneChange{Part::video, m_branch};
        mayMiss = mayMiss || change.part == Part::video || change.part == Part::branches ||
                  change.part == Part::scene;
        if (change.part == Part::addedVideos) {
            matchAdded();
            mayMiss = true;
        }
    }
    if ((mayMiss && listMissing()) || isOurs) {
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
    const std::string own = ownVideo();
    const bool differs = m_branch >= 0 && (own.empty() || selected() < 0 || shownName() != own);
    m_controls.setText(kOwnVideo, ownVideoText(own));
    m_controls.setVisible(kOwnVideo, differs);
    m_controls.setVisible(kZonesHint, !differs);
    m_controls.setVisible(kNoVideo, m_branch >= 0 && own.empty());
}

std::string VideoPresenter::ownVideo() const {
    return m_branch >= 0 && m_branch < m_session.branchCount() ? m_session.video(m_branch)
                                                               : std::string();
}

std::string VideoPresenter::videoToEdit() const {
    // The video's place in its list picks a branch, whose video is taken. Where the two lists are
    // ordered differently this is another video than the one shown. Intended.
    return m_session.video(selected());
}

std::string VideoPresenter::videoAhead() const {
    const int branch = selected();
    return branch >= 0 && branch < m_session.branchCount() ? videoToEdit() : std::string();
}

} // namespace ui
