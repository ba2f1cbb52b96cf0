// The zones of a video by the same rules as zone::ZoneManager, as plainly as they can be said: one
// ZoneShape for each frame, nothing shared. What random calls are checked against; the operations
// are called as they are there, and log the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/Log.h"
#include "zone/ZoneManager.h"

namespace zone_tests {

struct PlainZone {
    std::string name;
    std::vector<std::shared_ptr<zone::ZoneShape>> frames;
    int selected = -1;

    void setSelectedPoint(int handle) { selected = handle; }
    /// The frame's shape, made where there is none.
    zone::ZoneShape& shape(int frame) {
        auto& held = frames.begin()[frame];
        return *(held = held ? held : zone::ZoneShape::createEmpty());
    }
    /// One past the frames that a change at `frame` spreads to.
    [[nodiscard]] int end(int frame) const {
        const bool spreads = zone::currentZoneManager()->progressChanges;
        return spreads ? static_cast<int>(frames.size()) : frame + 1;
    }
};

class PlainZones {
public:
    bool isActive(int zone, int frame) {
        const PlainZone* found = find(zone, frame, 70, 62);
        return found && (!found->frames.begin()[frame] || found->frames.begin()[frame]->active);
    }
    void setActive(int zone, int frame, bool active) {
        if (PlainZone* found = find(zone, frame, 78, 75)) {
            for (int i = frame; i < found->end(frame); ++i) {
                found->shape(i).active = active;
            }
        }
    }
    bool hitTest(int zone, int frame, int x, int y) {
        PlainZone* found = find(zone, frame, 142, 112);
        if (!found || !found->frames.begin()[frame]) {
            return false;
        }
        found->selected = found->shape(frame).hitTest(x, y);
        return found->selected != -1;
    }
    void endMove(int zone, int frame, int, int) { (void)find(zone, frame, 149, 126); }
    void moveSelectedPoint(int zone, int frame, int x, int y) {
        PlainZone* found = find(zone, frame, 157, 136);
        if (!found || found->selected == -1) {
            return;
        }
        platform::Point delta;
        const bool shifts = found->shape(frame).movePoint(found->selected, x, y, delta);
        for (int i = frame + 1; i < found->end(frame); ++i) {
            platform::Point own;
            zone::ZoneShape& shape = found->shape(i);
            for (platform::Point& p : shape.points) { // modulo 2^32
                p = {static_cast<int>(std::int64_t{p.x} + delta.x),
                     static_cast<int>(std::int64_t{p.y} + delta.y)};
            }
            if (!shifts) {
                shape.movePoint(found->selected, x, y, own);
            }
        }
    }
    void addPoint(int zone, int frame, int x, int y) {
        if (PlainZone* found = find(zone, frame, 164, 171)) {
            const int after = found->selected;
            for (int i = 0; i < frameCount; ++i) {
                const int added = found->shape(i).insertPoint(after, x, y);
                found->selected = i == frame && added != -1 ? added : found->selected;
            }
        }
    }
    void deletePoint(int zone, int frame, int x, int y) {
        if (const PlainZone* found = find(zone, frame, 171, 203)) {
            for (const auto& shape : found->frames) {
                if (shape) {
                    shape->removePoint(shape->hitTest(x, y));
                }
            }
        }
    }
    std::string getZoneName(int zone) {
        const PlainZone* found = find(zone, 127, "Invalid zone index");
        return found ? found->name : "";
    }
    void setZoneName(int zone, const std::string& name) {
        if (PlainZone* found = find(zone, 135, "Invalid zone index")) {
            found->name = name.substr(0, 243);
        }
    }
    void removeZone(int zone) {
        if (find(zone, 119, "Invalid zone index")) {
            zones.erase(zones.begin() + zone);
        }
    }
    void draw(int zone, int frame, platform::Canvas& canvas, int x, int y) {
        const PlainZone* found = this->zone(zone);
        if (found && frame >= 0 && frame < frameCount && found->frames.begin()[frame]) {
            found->frames.begin()[frame]->draw(canvas, x, y, found->selected);
        }
    }
    PlainZone* zone(int index) {
        const bool isThere = index >= 0 && index < static_cast<int>(zones.size());
        return isThere ? &zones.begin()[index] : nullptr;
    }

    std::vector<PlainZone> zones;
    int frameCount = 0;

private:
    PlainZone* find(int index, int line, const char* text) {
        if (!zone(index)) {
            core::Log::get()->Error("..\\ZoneManager.cpp:%d %s", line, text);
        }
        return zone(index);
    }
    PlainZone* find(int index, int frame, int zoneLine, int frameLine) {
        PlainZone* found = find(index, zoneLine, "Zone index is invalid");
        if (!found || (frame >= 0 && frame < frameCount)) {
            return found;
        }
        core::Log::get()->Error("..\\Zone.cpp:%d Frame index is invalid", frameLine);
        return nullptr;
    }
};

} // namespace zone_tests
