#include "ZoneEdit/ShapeEditor.h"

#include <cstddef>
#include <utility>

#include "core/EditorSettings.h"
#include "zone/EditContext.h"
#include "zone/PointSums.h"
#include "zone/ShapeGeometry.h"
#include "zone/ShapeKeys.h"
#include "zone/Zone.h"
#include "zone/ZoneManager.h"

namespace zoneedit {
namespace {

using platform::Point;
using Name = zone::StepLabel::Name;

constexpr const char* kFills = "fillBetweenKeys";
constexpr const char* kWay = "interpolation";
constexpr const char* kSmooth = "smooth";

} // namespace

ShapeEditor::ShapeEditor(const EditedVideo& video, zone::ZoneSession& session,
                         zone::SessionKeys& keys, Range range, core::EditorSettings* settings)
    : m_video(video), m_session(session), m_keys(keys), m_range(std::move(range)),
      m_settings(settings), m_fills(settings != nullptr && settings->getBool(kFills, false)),
      m_way(settings != nullptr && settings->getString(kWay, "straight") == kSmooth
                ? zone::BlendWay::smooth
                : zone::BlendWay::straight) {}

void ShapeEditor::setFills(bool fills) {
    m_fills = fills;
    if (m_settings != nullptr) {
        m_settings->set(kFills, fills ? "true" : "false");
    }
}

void ShapeEditor::setWay(zone::BlendWay way) {
    m_way = way;
    if (m_settings != nullptr) {
        m_settings->set(kWay, way == zone::BlendWay::smooth ? kSmooth : "straight");
    }
}

std::optional<ShapeEditor::Place> ShapeEditor::place() const {
    const Place place{m_session.context().currentZone, m_video.frame()};
    const auto zone = m_session.zones().zone(place.zone);
    return zone && place.frame >= 0 && place.frame < zone->frameCount() ? std::optional(place)
                                                                        : std::nullopt;
}

zone::Points ShapeEditor::points() const {
    const auto at = place();
    const auto held = at ? m_session.zones().zone(at->zone)->points(at->frame) : std::nullopt;
    return held ? zone::Points(held->begin(), held->end()) : zone::Points();
}

int ShapeEditor::handle() const {
    const auto at = place();
    return at ? m_session.editingOf(at->zone).selectedPoint : -1;
}

std::optional<Point> ShapeEditor::handlePlace() const {
    const zone::Points all = points();
    const int chosen = handle();
    if (chosen < 0 || chosen > static_cast<int>(all.size())) {
        return std::nullopt;
    }
    const auto index = static_cast<std::size_t>(chosen);
    if (index < all.size()) {
        return all[index];
    }
    if (chosen < zone::kMinimumOutline) { // chosen by its number, before points were removed
        return std::nullopt;
    }
    const Place at = place().value_or(Place());
    return m_session.editingOf(at.zone).centerOf(at.frame);
}

std::vector<int> ShapeEditor::keys() const {
    const auto at = place();
    if (!at) {
        return {};
    }
    const auto zone = m_session.zones().zone(at->zone);
    return authored(markedKeys().through(*zone, m_session.editingOf(at->zone).knownKeys()));
}

std::vector<int> ShapeEditor::keysOfAuthor() const {
    const auto at = place();
    if (!at) {
        return {};
    }
    const zone::ZoneEditing& editing = m_session.editingOf(at->zone);
    const auto zone = m_session.zones().zone(at->zone);
    std::vector<int> keys =
        zone::keysSetByHand(authored(zone::courseKeys(*zone, editing.knownKeys())),
                            editing.shapedFrames, editing.followed);
    if (editing.isNew && !editing.shapedFrames.contains(0)) {
        std::erase(keys, 0);
    }
    return keys;
}

std::vector<int> ShapeEditor::authored(std::vector<int> keys) const {
    const int zone = place().value().zone;
    const zone::ZoneEditing& editing = m_session.editingOf(zone);
    std::erase_if(keys, [&editing](int key) {
        return !editing.shapedFrames.contains(key) && editing.isBlended(key);
    });
    return zone::authoredKeys(*m_session.zones().zone(zone), keys, editing.shapedFrames);
}

const zone::ShapeKeys& ShapeEditor::markedKeys() const {
    return m_keys.of(m_session.context().currentZone);
}

std::optional<ShapeEditor::Start> ShapeEditor::start(bool isWhole, bool isMove) const {
    const auto at = place();
    if (!at) {
        return std::nullopt;
    }
    const auto zone = m_session.zones().zone(at->zone);
    Start start;
    start.place = *at;
    start.handle = handle();
    start.at = handlePlace().value_or(Point());
    const bool carries = m_session.context().progressChanges;
    const auto range = m_range();
    if (isWhole && range && range->contains(at->frame)) {
        start.reach = {at->frame, *range, {}, false};
        start.isPlain = false;
    } else if (m_fills) {
        start.reach = zone::fillReach(*zone, at->frame, keys(), carries);
        start.isPlain = false;
    } else {
        start.reach = zone::plainReach(*zone, at->frame, carries);
    }
    if (!isMove || !start.isPlain) {
        start.before = std::make_shared<zone::Zone>(*zone); // shares the shapes until they change
    }
    return start;
}

bool ShapeEditor::isCentreChosen() const {
    return handle() == static_cast<int>(points().size());
}

Point ShapeEditor::reachable(Point to) const {
    return isCentreChosen() ? to : m_session.clamped(to);
}

std::optional<ShapeEditor::Start> ShapeEditor::startMove() const {
    return start(isCentreChosen(), true);
}

void ShapeEditor::reshape(const Start& start, Name name, const zone::Reshape& reshape) {
    m_session.replaceShapes({name, start.place.zone, start.place.frame},
                            zone::reshaped(*start.before, start.reach, reshape));
}

void ShapeEditor::move(const Start& start, Point to) {
    if (start.isPlain) {
        m_session.moveSelectedPoint(start.place.zone, start.place.frame, to.x, to.y);
    } else if (start.handle >= 0) {
        const auto held = start.before->points(start.place.frame);
        const bool isCentre = held && start.handle == static_cast<int>(held->size());
        reshape(start, moveName(start),
                isCentre ? zone::shifted(zone::differenceOf(to, start.at))
                         : zone::movedPoint(start.handle, m_session.clamped(to)));
    }
}

Name ShapeEditor::moveName(const Start& start) {
    return start.reach.keys.empty() ? Name::movePoint : Name::fill;
}

bool ShapeEditor::insertOnEdge(Place place, Point at, double reach) {
    const int edge = zone::edgeAt(points(), at, reach);
    if (edge < 0 || m_session.isHandleAt(place.zone, place.frame, at.x, at.y)) {
        return false;
    }
    const auto held = m_session.zones().zone(place.zone);
    m_session.replaceShapes({Name::addPoint, place.zone, place.frame},
                            zone::withPointEverywhere(*held, place.frame, edge, at));
    m_session.hitTest(place.zone, place.frame, at.x, at.y);
    return true;
}

void ShapeEditor::reshapeAll(Name name, const zone::Reshape& change) {
    if (const auto begun = start()) {
        reshape(*begun, name, change);
    }
}

} // namespace zoneedit
