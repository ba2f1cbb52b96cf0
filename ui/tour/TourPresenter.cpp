#include "ui/tour/TourPresenter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "core/EditorSettings.h"
#include "core/Texts.h"
#include "recovery/RecentScenes.h"
#include "scene/Action.h"
#include "scene/SceneFolders.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/branch_editor/ControlNames.h"
#include "ui/tour/TourControls.h"
#include "ui/tour/TourPlaces.h"

namespace ui {

using namespace branch_list;
using platform::Rect;

namespace {

constexpr std::u16string_view kRing = u"RingTour";
constexpr std::u16string_view kPointer = u"PointerTour";
constexpr std::u16string_view kText = u"LabelTour";
constexpr std::u16string_view kTitle = u"LabelTourTitle";
constexpr std::u16string_view kNextButton = u"ButtonTourNext";

constexpr int kCaptionHeight = 36;
constexpr int kMargin = 8;

struct Step {
    core::Text title;
    core::Text text; ///< empty: it is about the first action
    /// What it is about; later ones where the ones before are not on show.
    std::array<std::u16string_view, 3> subjects;
};

constexpr std::array<Step, 5> kSteps{{
    {"A scene is made of branches"_tr,
     "Each branch plays one video. Choose here which branch you work on. Add Branch makes another."_tr,
     {kBranchCombo, kMapButton}},
    {"Actions say what comes next"_tr, {}, {kActionList, u"ButtonAddAction", kMapButton}},
    {"Zones are what a learner clicks"_tr,
     "You draw an area of the picture, and it moves with what it shows. Here you draw the zones of this branch."_tr,
     {u"ButtonEditBranchZones", kMapButton}},
    {"The map shows the whole scene"_tr,
     "Each box is a branch, each line an action. Click a box to work on its branch. Press Map to show or hide the map."_tr,
     {kSceneMap, kMapTab, kMapButton}},
    {"Try it at any time"_tr,
     "Play runs the scene as it is now, saved or not. Click zones and press keys as a learner would."_tr,
     {u"ButtonPlay"}},
}};
constexpr int kLast = static_cast<int>(kSteps.size()) - 1;
constexpr int kMapStep = 3;

constexpr std::string_view kSettingsKey = "tour";
constexpr std::array<std::string_view, 2> kDemoScenes{"Fire Drill Level 1", "Forklift Safety"};

bool isDemo(const std::string& scene) {
    return std::find(kDemoScenes.begin(), kDemoScenes.end(), scene) != kDemoScenes.end();
}

/// Whether it says neither where it leads to nor what it waits for.
bool isUnfinished(const scene::Action& action) {
    const bool waits = action.Type() == scene::Action::kZoneAction ||
                       action.Type() == scene::Action::kKeypressAction;
    return action.BranchID().empty() || (waits && action.Parameter().empty());
}

std::u16string textOf(const scene::Action& action) {
    switch (action.Type()) {
    case scene::Action::kZoneAction:
        return core::tr(
            "TourZone|The first one waits for a click into the zone \"{0}\" and leads to "
            "\"{1}\". Add Action makes another."_tr,
            action.Parameter(), action.BranchID());
    case scene::Action::kKeypressAction:
        return core::tr("TourKey|The first one waits for the key {0} and leads to \"{1}\". Add "
                        "Action makes another."_tr,
                        action.Parameter(), action.BranchID());
    case scene::Action::kRandomAction:
        return core::tr(
            "TourRandom|The first one leads to \"{0}\" by chance when the clip ends. Add "
            "Action makes another."_tr,
            action.BranchID());
    default:
        return core::tr("TourDefault|The first one leads to \"{0}\" when the clip ends. Add Action "
                        "makes another."_tr,
                        action.BranchID());
    }
}

} // namespace

bool isTourDue(core::EditorSettings* settings, const std::string& scene) {
    if (settings == nullptr || !isDemo(scene) || !settings->getString(kSettingsKey, {}).empty()) {
        return false;
    }
    const auto opened = recovery::openedScenes();
    const auto listed = scene::listScenesAndTimes();
    return opened.size() == 1 && opened.contains(scene) &&
           std::all_of(listed.begin(), listed.end(),
                       [](const auto& one) { return isDemo(one.name); }) &&
           settings->set(kSettingsKey, "shown");
}

TourPresenter::TourPresenter(Controls controls, scene::SceneSession& session,
                             const BranchPresenter& branches, LeftPane& leftPane, int& step)
    : m_controls(controls), m_session(session), m_branches(branches), m_leftPane(leftPane),
      m_step(step), m_subscription(session.observe([this](const auto&) { refresh(); })) {}

void TourPresenter::go(int by) {
    if (m_step + by > kLast) {
        leave();
    } else {
        show(m_step + by);
    }
}

void TourPresenter::leave() {
    turnMap(false);
    const toolkit::CControlUI* focus = m_controls.manager().GetFocus();
    const toolkit::CControlUI* panel = m_controls.find(kTourPanel);
    const bool hasFocus = focus != nullptr && panel != nullptr && focus->isInside(panel);
    m_step = -1;
    for (const std::u16string_view name : {kTourPanel, kRing, kPointer}) {
        m_controls.setVisible(name, false);
    }
    if (hasFocus) {
        m_controls.setFocus(kBranchCombo);
    }
}

void TourPresenter::show(int step) {
    if (step < 0) {
        return;
    }
    m_step = std::min(step, kLast);
    turnMap(m_step == kMapStep);
    const core::Text title = kSteps.at(static_cast<std::size_t>(m_step)).title;
    m_controls.setText(kTitle, core::tr(title));
    m_controls.setText(u"LabelTourStep", core::tr("PlaceOf|{0} of {1}"_tr, m_step + 1, kLast + 1));
    m_controls.setText(kNextButton, m_step == kLast ? core::tr("Done"_tr) : core::tr("Next"_tr));
    if (toolkit::CControlUI* panel = m_controls.find(kTourPanel)) {
        panel->SetLabel(core::tr(title));
        panel->SetVisible(true);
    }
    if (m_step == 0 && m_controls.hasFocus(u"ButtonTourBack")) {
        m_controls.setFocus(kNextButton); // there is no way back
    }
    refresh();
    announce();
}

void TourPresenter::announce() {
    for (const std::u16string_view name : {kTitle, kText}) {
        toolkit::CControlUI* label = m_controls.find(name);
        if (label != nullptr && label->IsVisible()) {
            label->announce(false);
        }
    }
}

void TourPresenter::turnMap(bool shown) {
    if (shown && m_leftPane.isShown(LeftPane::Page::preview)) {
        m_leftPane.showPage(LeftPane::Page::map);
    } else if (shown) {
        m_hasTurnedMap = m_leftPane.putInPlace(LeftPane::Page::map) || m_hasTurnedMap;
    } else if (m_hasTurnedMap) {
        m_hasTurnedMap = false;
        m_leftPane.leave();
    }
}

void TourPresenter::refresh() {
    if (!isShown()) {
        return;
    }
    toolkit::CControlUI* label = m_controls.find(kText);
    const std::u16string now = text();
    if (label != nullptr && label->GetText() != now) {
        label->SetText(now);
    }
    follow();
}

void TourPresenter::follow() {
    if (!isShown()) {
        return;
    }
    toolkit::CControlUI* panel = m_controls.find(kTourPanel);
    toolkit::CControlUI* ring = m_controls.find(kRing);
    auto* pointer = m_controls.find<TourPointer>(kPointer);
    if (panel == nullptr || ring == nullptr || pointer == nullptr) {
        return;
    }
    // What moves has its new place as soon as this is over.
    const toolkit::CPaintManagerUI::Busy busy(&m_controls.manager());
    const platform::Size window = m_controls.manager().GetWindowSize();
    const Rect room{kMargin, kCaptionHeight + kMargin, window.width - kMargin,
                    window.height - kMargin};
    const TourPlaces places = placeTour(subject(), room, panel->GetPlace().value_or(Rect{}).size());
    const auto move = [](toolkit::CControlUI& control, const Rect& place) {
        if (control.GetPlace() != place) {
            control.SetPlace(place);
        }
        if (control.isShown() == place.isEmpty()) {
            control.SetVisible(!place.isEmpty());
        }
    };
    move(*panel, places.panel);
    move(*ring, places.ring);
    move(*pointer, places.pointer);
    pointer->setSide(places.side);
}

std::u16string TourPresenter::text() const {
    const core::Text text = kSteps.at(static_cast<std::size_t>(m_step)).text;
    if (!text.empty()) {
        return core::tr(text);
    }
    const int branch = m_branches.shown();
    const std::vector<scene::Action> actions =
        branch >= 0 ? m_session.actions(branch) : std::vector<scene::Action>();
    return actions.empty() || isUnfinished(actions.front())
               ? core::tr(
                     "An action leads to another branch: after a click, after a key, by chance "
                     "or when the clip ends. Add Action makes one."_tr)
               : textOf(actions.front());
}

Rect TourPresenter::subject() const {
    for (const std::u16string_view name : kSteps.at(static_cast<std::size_t>(m_step)).subjects) {
        const Rect area = name == kActionList ? rows() : areaOf(name);
        if (!area.isEmpty()) {
            return area;
        }
    }
    return {};
}

Rect TourPresenter::areaOf(std::u16string_view name) const {
    const toolkit::CControlUI* control = name.empty() ? nullptr : m_controls.find(name);
    return control != nullptr && control->IsVisible() ? control->visibleArea(control->GetPos())
                                                      : Rect{};
}

Rect TourPresenter::rows() const {
    const auto* list = m_controls.find<toolkit::CListUI>(kActionList);
    if (list == nullptr || !list->IsVisible()) {
        return {};
    }
    Rect all;
    for (int i = 0; i < list->GetCount(); ++i) {
        const toolkit::CControlUI& row = *list->GetItemAt(i);
        all = all.united(row.visibleArea(row.GetPos()));
    }
    const Rect edges = list->GetPos();
    return all.isEmpty() ? all : Rect{edges.left, all.top - 1, edges.right, all.bottom};
}

} // namespace ui
