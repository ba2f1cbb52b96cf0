// A zone by the same rules as zone::Zone, as plainly as they can be said: one object for each
// frame, nothing shared. What random calls are checked against.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace zone_tests {

struct PlainShape {
    std::vector<platform::Point> points;
    platform::Point center;
    bool active = true;
    bool edited = false;

    [[nodiscard]] int count() const { return static_cast<int>(points.size()); }

    /// The index, the count or -1.
    [[nodiscard]] int hit(platform::Point at) const {
        const auto inBox = [&](platform::Point p) {
            return at.x >= p.x - 8 && at.x < p.x + 8 && at.y >= p.y - 8 && at.y < p.y + 8;
        };
        for (int i = 0; i < count(); ++i) {
            if (inBox(points[static_cast<std::size_t>(i)])) {
                return i;
            }
        }
        return count() >= 3 && inBox(center) ? count() : -1;
    }
    void shift(platform::Point delta) {
        for (platform::Point& p : points) {
            p = {p.x + delta.x, p.y + delta.y};
        }
    }
    /// True and `delta` for a shift of the whole. `reports` is set by an index that is no handle.
    bool move(int index, platform::Point to, platform::Point& delta, bool& reports) {
        if (index == count()) {
            delta = {to.x - center.x, to.y - center.y};
            shift(delta);
            return true;
        }
        if (index < -1 || index >= count()) {
            reports = true;
        } else if (index >= 0) {
            points[static_cast<std::size_t>(index)] = {std::clamp(to.x, 0, 1279),
                                                       std::clamp(to.y, 0, 719)};
        }
        return false;
    }
    int insert(int after, platform::Point p) {
        if (after >= count() || (after < -1 && count() > 0)) {
            return -1;
        }
        const int at = after == -1 || count() == 0 ? count() : after + 1;
        points.insert(points.begin() + at, p);
        edited = true;
        return at;
    }
    /// An index that is no point is passed over.
    void erase(int index) {
        if (index >= 0 && index < count()) {
            points.erase(points.begin() + index);
            edited = true;
        }
    }
    void drawn() {
        center = {};
        for (const platform::Point& p : points) {
            center = {center.x + p.x, center.y + p.y};
        }
        if (count() > 2) {
            center = {center.x / count(), center.y / count()};
        }
    }
};

struct PlainZone {
    std::string name;
    std::vector<std::optional<PlainShape>> frames;
    int selected = -1;

    PlainShape& at(std::size_t frame) {
        if (!frames[frame]) {
            frames[frame].emplace();
        }
        return *frames[frame];
    }
    [[nodiscard]] std::size_t reach(std::size_t frame, bool spreads) const {
        return spreads ? frames.size() : frame + 1;
    }
    void setActive(std::size_t frame, bool active, bool spreads) {
        for (std::size_t i = frame; i < reach(frame, spreads); ++i) {
            at(i).active = active;
        }
    }
    /// Whether an index that is no handle was met, on however many frames.
    bool move(std::size_t frame, platform::Point to, bool spreads) {
        bool reports = false;
        if (selected == -1) {
            return reports;
        }
        platform::Point delta;
        const bool whole = at(frame).move(selected, to, delta, reports);
        for (std::size_t i = frame + 1; i < reach(frame, spreads); ++i) {
            platform::Point own;
            if (whole) {
                at(i).shift(delta);
            } else {
                at(i).move(selected, to, own, reports);
            }
        }
        return reports;
    }
    void add(std::size_t frame, platform::Point p) {
        int added = -1;
        for (std::size_t i = 0; i < frames.size(); ++i) {
            const int index = at(i).insert(selected, p);
            added = i == frame ? index : added;
        }
        selected = added != -1 ? added : selected;
    }
    void remove(platform::Point p) {
        for (std::optional<PlainShape>& shape : frames) {
            if (shape) {
                shape->erase(shape->hit(p));
            }
        }
    }
    bool hit(std::size_t frame, platform::Point p) {
        if (!frames[frame]) {
            return false;
        }
        selected = frames[frame]->hit(p);
        return selected != -1;
    }
};

} // namespace zone_tests
