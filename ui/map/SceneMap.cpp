#include "ui/map/SceneMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Geometry.h"

namespace ui {

using map::MapNode;
using map::NodeForm;

namespace {

struct Step {
    int percent;
    NodeForm form;
    double scale; ///< of the form's own pixels
};
constexpr std::array<Step, 7> kSteps{{{35, NodeForm::name, 1},
                                      {45, NodeForm::still, 0.75},
                                      {60, NodeForm::still, 1},
                                      {80, NodeForm::whole, 0.8},
                                      {100, NodeForm::whole, 1},
                                      {125, NodeForm::whole, 1.25},
                                      {150, NodeForm::whole, 1.5}}};
constexpr int kUsualStep = 4;
constexpr StepRange kStepsAtFirst{2, kUsualStep};
constexpr StepRange kAllSteps{0, static_cast<int>(kSteps.size()) - 1};
constexpr int kMargin = 16;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

} // namespace

SceneMap::SceneMap() : m_step(kUsualStep) {}

NodeForm SceneMap::form() const {
    return kSteps.at(at(m_step)).form;
}

double SceneMap::scale() const {
    return kSteps.at(at(m_step)).scale;
}

int SceneMap::zoomPercent() const {
    return kSteps.at(at(m_step)).percent;
}

const map::MapLayout& SceneMap::layout() const {
    static const map::MapLayout kNone;
    if (m_scene == nullptr || m_layouts == nullptr) {
        return kNone;
    }
    const auto found = m_layouts->find(form());
    return found != m_layouts->end()
               ? found->second
               : m_layouts->emplace(form(), map::layOut(*m_scene, form())).first->second;
}

void SceneMap::show(std::shared_ptr<const map::MapScene> scene, std::shared_ptr<MapLayouts> layouts,
                    int chosen, Kept kept) {
    const Rect before = placeOf(kept.before);
    const bool isNew = chosen != kept.now;
    const bool refits = isNew && m_isFitted && fitsInto(room());
    const StepRange steps = m_scene != nullptr ? m_fittedSteps : kStepsAtFirst;
    m_scene = std::move(scene);
    m_layouts = std::move(layouts);
    m_chosen = chosen;
    // What the pointer holds is of the scene before: its rows may be others now.
    if (m_linked >= 0) {
        forgetInput();
    }
    m_pressed = m_pressed >= 0 && m_pressed == kept.before ? kept.now : -1;
    m_items.clear();
    m_backLines.reset();
    const Rect now = placeOf(kept.now);
    if (before.width() == 0 || now.width() == 0 || refits) {
        fitWithin(steps);
    } else {
        const Point by{now.left - before.left, now.top - before.top};
        m_view = {m_view.x + by.x, m_view.y + by.y};
        m_pressedView = {m_pressedView.x + by.x, m_pressedView.y + by.y};
        if (isNew) {
            showNode(chosen);
        }
    }
    accessibleChanged(platform::AccessibleChange::children);
    tellValue();
    Invalidate();
}

void SceneMap::errorsChanged() {
    if (accessibleValue() != m_toldValue) {
        tellValue();
    }
    Invalidate();
}

void SceneMap::tellValue() {
    m_toldValue = accessibleValue();
    accessibleChanged(platform::AccessibleChange::value);
}

void SceneMap::choose(int branch) {
    if (m_chosen != branch) {
        m_chosen = branch;
        m_backLines.reset();
        if (!m_isPressed) { // what the pointer holds stays below it
            showNode(branch);
        }
        tellValue();
        Invalidate();
    }
}

void SceneMap::setFound(std::vector<int> branches) {
    if (m_found != branches) {
        m_found = std::move(branches);
        Invalidate();
    }
}

SceneMap::Rect SceneMap::inWindow(int x, int y, int width, int height) const {
    const auto edge = [this](int begin, double shift, int place) {
        return static_cast<int>(std::floor(begin * scale() - shift)) + place;
    };
    return {edge(x, m_view.x, GetPos().left), edge(y, m_view.y, GetPos().top),
            edge(x + width, m_view.x, GetPos().left), edge(y + height, m_view.y, GetPos().top)};
}

SceneMap::Rect SceneMap::placeOf(int branch) const {
    const map::MapLayout& map = layout();
    if (branch < 0 || at(branch) >= map.nodes.size()) {
        return {};
    }
    const MapNode& node = map.nodes[at(branch)];
    return inWindow(node.x, node.y, node.width, node.height);
}

int SceneMap::branchAt(Point point) const {
    const int count = static_cast<int>(layout().nodes.size());
    for (int branch = 0; branch < count; ++branch) {
        if (placeOf(branch).contains(point)) {
            return faceOf(branch);
        }
    }
    return -1;
}

int SceneMap::faceOf(int branch) const {
    const std::vector<MapNode>& nodes = layout().nodes;
    const int chain = nodes[at(branch)].chain;
    if (chain < 0) {
        return branch;
    }
    const bool isChosen =
        m_chosen >= 0 && at(m_chosen) < nodes.size() && nodes[at(m_chosen)].chain == chain;
    return isChosen ? m_chosen : layout().chains[at(chain)].front();
}

int SceneMap::actionAt(int branch, Point point) const {
    if (branch < 0 || form() != NodeForm::whole) {
        return -1;
    }
    const double y = (point.y - placeOf(branch).top) / scale();
    const int row = map::sizesOf(form()).row;
    const int count = static_cast<int>(m_scene->branches[at(branch)].actions.size());
    for (int action = 0; action < std::min(count, map::kMostRows); ++action) {
        if (std::abs(y - map::exitOf(form(), action)) <= row / 2.0) {
            return action;
        }
    }
    return -1;
}

void SceneMap::fit() {
    fitWithin(kAllSteps);
}

SceneMap::Size SceneMap::room() const {
    return {GetPos().width() - 2 * kMargin, GetPos().height() - 2 * kMargin};
}

bool SceneMap::fitsInto(const Size& room) const {
    return layout().width * scale() <= room.width && layout().height * scale() <= room.height;
}

void SceneMap::fitWithin(StepRange steps) {
    m_fittedSteps = steps;
    const Size room = this->room();
    m_backLines.reset();
    m_step = steps.most;
    while (m_step > steps.least && !fitsInto(room)) {
        --m_step;
    }
    const auto shift = [this](int length, int window) {
        const double free = window - length * scale();
        return -(kMargin + std::max(0.0, free / 2));
    };
    m_view = {shift(layout().width, room.width), shift(layout().height, room.height)};
    m_isFitted = true;
    showNode(m_chosen);
    if (m_onZoom) {
        m_onZoom();
    }
    Invalidate();
}

void SceneMap::setStep(int step, Point fixed) {
    step = std::clamp(step, 0, static_cast<int>(kSteps.size()) - 1);
    if (step == m_step) {
        return;
    }
    // Forms have places of their own: a node, or the part of the map, keeps its place.
    const int node = branchAt(fixed);
    const Rect before = placeOf(node);
    const double shareX =
        (fixed.x - GetPos().left + m_view.x) / std::max(1.0, layout().width * scale());
    const double shareY =
        (fixed.y - GetPos().top + m_view.y) / std::max(1.0, layout().height * scale());
    m_step = step;
    m_isFitted = false;
    m_backLines.reset();
    if (node >= 0) {
        const Rect now = placeOf(node);
        m_view.x +=
            now.left - before.left +
            (fixed.x - before.left) * (static_cast<double>(now.width()) / before.width() - 1);
        m_view.y += now.top - before.top;
    } else {
        m_view.x = shareX * layout().width * scale() - (fixed.x - GetPos().left);
        m_view.y = shareY * layout().height * scale() - (fixed.y - GetPos().top);
    }
    if (m_onZoom) {
        m_onZoom();
    }
    Invalidate();
}

void SceneMap::zoom(int by) {
    const Rect chosen = placeOf(m_chosen);
    const Rect& pos = GetPos();
    const bool isSeen = chosen.width() > 0 && chosen.intersected(pos).width() > 0;
    setStep(m_step + (by > 0 ? 1 : -1),
            isSeen ? Point{(chosen.left + chosen.right) / 2, (chosen.top + chosen.bottom) / 2}
                   : Point{(pos.left + pos.right) / 2, (pos.top + pos.bottom) / 2});
    if (isSeen) {
        showNode(m_chosen);
    }
}

/// Moves the view as little as it takes to show the branch.
void SceneMap::showNode(int branch) {
    const Rect place = placeOf(branch);
    const Rect& pos = GetPos();
    if (place.width() == 0 || pos.width() == 0) {
        return;
    }
    const auto by = [](int begin, int end, int from, int to) {
        return begin < from + kMargin || end - begin > to - from - 2 * kMargin
                   ? std::min(0, begin - from - kMargin)
                   : std::max(0, end - to + kMargin);
    };
    m_view.x += by(place.left, place.right, pos.left, pos.right);
    m_view.y += by(place.top, place.bottom, pos.top, pos.bottom);
    Invalidate();
}

void SceneMap::SetPos(const Rect& pos) {
    const bool isNew = pos.size() != GetPos().size();
    CControlUI::SetPos(pos);
    if (isNew && m_isFitted) {
        fitWithin(m_fittedSteps);
    }
}

std::u16string SceneMap::toolTipAt(Point point) const {
    const int branch = branchAt(point);
    if (branch < 0) {
        return {};
    }
    const int chain = layout().nodes[at(branch)].chain;
    if (chain < 0) {
        return core::displayText(m_scene->branches[at(branch)].name);
    }
    const std::vector<int>& members = layout().chains[at(chain)];
    constexpr std::size_t kMostNames = 8;
    std::string names;
    for (std::size_t i = 0; i < std::min(members.size(), kMostNames); ++i) {
        names += (i == 0 ? "" : ", ") + m_scene->branches[at(members[i])].name;
    }
    if (members.size() > kMostNames) {
        names = core::trStored("NamesAndMore|{1} and {0} more|{1} and {0} more"_trn,
                               members.size() - kMostNames, {names});
    }
    return core::displayText(names);
}

} // namespace ui
