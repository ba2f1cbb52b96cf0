// The zones of a video by the same rules as zone::ZoneManager, as plainly as they can be said: one
// shape for each frame, nothing shared, no check, and what editing remembers beside it. What random
// calls are checked against; the operations are called as they are there.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/Log.h"
#include "platform/Geometry.h"
#include "zone/ZoneShape.h"

namespace zone_tests {

struct PlainShape : zone::ZoneShape {
    [[nodiscard]] int count() const { return static_cast<int>(points.size()); }
    /// Whether it was shifted as a whole, by `delta`.
    bool move(int index, platform::Point to, platform::Size area, platform::Point& delta) {
        if (index == count()) {
            delta = {wrapped(std::int64_t{to.x} - center.x),
                     wrapped(std::int64_t{to.y} - center.y)};
            shift(delta);
            return true;
        }
        if (index < -1 || index > count()) {
            core::Log::get()->Error("..\\ZoneShape.cpp:368 Invalid point index");
        } else if (index != -1) {
            points.begin()[index] = {inside(to.x, area.width), inside(to.y, area.height)};
        }
        return false;
    }
    void shift(platform::Point delta) {
        for (platform::Point& p : points) {
            p = {wrapped(std::int64_t{p.x} + delta.x), wrapped(std::int64_t{p.y} + delta.y)};
        }
    }
    int insert(int after, platform::Point point) {
        if (after >= count() || (count() > 0 && after < -1)) {
            return -1;
        }
        const int at = count() == 0 || after == -1 ? count() : after + 1;
        points.insert(points.begin() + at, point);
        recordSize = 8 + 8 * static_cast<std::uint32_t>(count());
        return at;
    }
    [[nodiscard]] int hit(platform::Point at) const {
        const auto covers = [at](platform::Point handle) {
            return std::int64_t{handle.x} - 8 <= at.x && at.x < std::int64_t{handle.x} + 8 &&
                   std::int64_t{handle.y} - 8 <= at.y && at.y < std::int64_t{handle.y} + 8;
        };
        const auto found = std::find_if(points.begin(), points.end(), covers);
        if (found != points.end()) {
            return static_cast<int>(found - points.begin());
        }
        return count() > 2 && covers(center) ? count() : -1;
    }
    void show() {
        std::int64_t x = 0;
        std::int64_t y = 0;
        for (const platform::Point& p : points) {
            x += p.x;
            y += p.y;
        }
        const std::int64_t parts = count() > 2 ? count() : 1;
        center = {limited(x / parts), limited(y / parts)};
    }

    platform::Point center;

private:
    static int wrapped(std::int64_t value) { return static_cast<int>(value); } // modulo 2^32
    static int limited(std::int64_t value) {
        return static_cast<int>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
    }
    static int inside(int value, int size) {
        return std::max(size > 0 ? std::min(value, size - 1) : value, 0);
    }
};

struct PlainZone {
    std::string name;
    std::vector<std::optional<PlainShape>> frames;
    int selected = -1;
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
            this->zone(zone).selected = held(zone, frame)->hit({x, y});
        }
        return held(zone, frame) && this->zone(zone).selected != -1;
    }
    void endMove(int, int, int, int) {}
    void moveSelectedPoint(int zone, int frame, int x, int y) {
        const int selected = this->zone(zone).selected;
        if (selected == -1) {
            return;
        }
        platform::Point delta;
        const bool shifts = shape(zone, frame).move(selected, {x, y}, area, delta);
        for (int i = frame + 1; i < end(frame); ++i) {
            if (shifts) {
                shape(zone, i).shift(delta);
            } else {
                platform::Point own;
                shape(zone, i).move(selected, {x, y}, area, own);
            }
        }
    }
    void addPoint(int zone, int frame, int x, int y) {
        int selected = this->zone(zone).selected;
        for (int i = 0; i < frameCount; ++i) {
            const int added = shape(zone, i).insert(this->zone(zone).selected, {x, y});
            selected = i == frame && added != -1 ? added : selected;
        }
        this->zone(zone).selected = selected;
    }
    void deletePoint(int zone, int, int x, int y) {
        for (std::optional<PlainShape>& shape : this->zone(zone).frames) {
            const int hit = shape ? shape->hit({x, y}) : -1;
            if (hit != -1 && hit < shape->count()) {
                shape->points.erase(shape->points.begin() + hit);
                shape->recordSize -= 8;
            }
        }
    }
    std::string getZoneName(int zone) { return this->zone(zone).name; }
    void setZoneName(int zone, const std::string& name) {
        this->zone(zone).name = name.substr(0, 243);
    }
    void removeZone(int zone) {
        zones.erase(zones.begin() + zone);
        current = std::min(zone, static_cast<int>(zones.size()) - 1);
    }
    void showCurrent() {
        if (current >= 0 && shown >= 0) {
            show(current, shown);
        }
    }
    void show(int zone, int frame) {
        if (held(zone, frame)) {
            held(zone, frame)->show();
        }
    }
    PlainZone& zone(int index) { return zones.begin()[index]; }
    /// Empty where the frame has no shape.
    std::optional<PlainShape>& held(int zone, int frame) {
        return this->zone(zone).frames.begin()[frame];
    }
    /// Made where there is none.
    PlainShape& shape(int zone, int frame) {
        auto& found = held(zone, frame);
        return found ? *found : found.emplace();
    }

    std::vector<PlainZone> zones;
    int frameCount = 0;
    int current = -1; ///< zone
    int shown = -1;   ///< frame
    bool progressChanges = true;
    platform::Size area;

private:
    /// One past the frames that a change at `frame` spreads to.
    [[nodiscard]] int end(int frame) const { return progressChanges ? frameCount : frame + 1; }
};

} // namespace zone_tests
