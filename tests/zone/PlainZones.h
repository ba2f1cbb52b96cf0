// The zones of a video by the same rules as zone::ZoneManager, as plainly as they can be said: one
// ZoneShape for each frame, nothing shared, no check. What random calls are checked against; the
// operations are called as they are there.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zone/ZoneManager.h"

namespace zone_tests {

struct PlainZone {
    std::string name;
    std::vector<std::shared_ptr<zone::ZoneShape>> frames;
    int selected = -1;

    void setSelectedPoint(int handle) { selected = handle; }
};

class PlainZones {
public:
    bool isActive(int zone, int frame) { return !held(zone, frame) || held(zone, frame)->active; }
    void setActive(int zone, int frame, bool active) {
        for (int i = frame; i < end(frame); ++i) {
            shape(zone, i).active = active;
        }
    }
    bool hitTest(int zone, int frame, int x, int y) {
        if (held(zone, frame)) {
            this->zone(zone)->selected = held(zone, frame)->hitTest(x, y);
        }
        return held(zone, frame) && this->zone(zone)->selected != -1;
    }
    void endMove(int, int, int, int) {}
    void moveSelectedPoint(int zone, int frame, int x, int y) {
        const int selected = this->zone(zone)->selected;
        if (selected == -1) {
            return;
        }
        platform::Point delta;
        const bool shifts = shape(zone, frame).movePoint(selected, x, y, delta);
        for (int i = frame + 1; i < end(frame); ++i) {
            platform::Point own;
            for (platform::Point& p : shape(zone, i).points) { // modulo 2^32
                p = {static_cast<int>(std::int64_t{p.x} + delta.x),
                     static_cast<int>(std::int64_t{p.y} + delta.y)};
            }
            if (!shifts) {
                shape(zone, i).movePoint(selected, x, y, own);
            }
        }
    }
    void addPoint(int zone, int frame, int x, int y) {
        int selected = this->zone(zone)->selected;
        for (int i = 0; i < frameCount; ++i) {
            const int added = shape(zone, i).insertPoint(this->zone(zone)->selected, x, y);
            selected = i == frame && added != -1 ? added : selected;
        }
        this->zone(zone)->selected = selected;
    }
    void deletePoint(int zone, int, int x, int y) {
        for (const auto& shape : this->zone(zone)->frames) {
            if (shape) {
                shape->removePoint(shape->hitTest(x, y));
            }
        }
    }
    void draw(int zone, int frame, platform::Canvas& canvas, int x, int y) {
        if (held(zone, frame)) {
            held(zone, frame)->draw(canvas, x, y, this->zone(zone)->selected);
        }
    }
    std::string getZoneName(int zone) { return this->zone(zone)->name; }
    void setZoneName(int zone, const std::string& name) {
        this->zone(zone)->name = name.substr(0, 243);
    }
    void removeZone(int zone) { zones.erase(zones.begin() + zone); }
    PlainZone* zone(int index) { return &zones.begin()[index]; }

    /// Empty where the frame has no shape.
    std::shared_ptr<zone::ZoneShape>& held(int zone, int frame) {
        return this->zone(zone)->frames.begin()[frame];
    }
    /// Made where there is none.
    zone::ZoneShape& shape(int zone, int frame) {
        auto& found = held(zone, frame);
        return *(found = found ? found : zone::ZoneShape::createEmpty());
    }

    std::vector<PlainZone> zones;
    int frameCount = 0;

private:
    /// One past the frames that a change at `frame` spreads to.
    [[nodiscard]] int end(int frame) const {
        return zone::currentZoneManager()->progressChanges ? frameCount : frame + 1;
    }
};

} // namespace zone_tests
