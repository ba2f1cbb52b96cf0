// The timeline under the picture: where the zone that is edited is active and has its keys, the
// frame on show, the marked range. Dragging asks for frames, with Shift it marks a range; the wheel
// steps, zooms with Ctrl and moves with Shift. From 40 pixels of height on it has a ruler. UI
// thread only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ZoneEdit/FrameSelection.h"
#include "ZoneEdit/TimeScale.h"
#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"
#include "zone/ShapeStretch.h"

namespace zoneedit {

/// What the timeline shows of the zone.
struct TimelineMarks {
    std::vector<zone::FrameRange> active; ///< ascending, none touches another
    std::vector<int> keys;                ///< ascending
    bool isZone = false;                  ///< there is one
};

class Timeline final : public toolkit::CControlUI {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        /// The author wants to see this frame; asked for again and again during a drag.
        virtual void frameWanted(int frame) = 0;
        /// The drag is over: what the author does next is meant for the frame wanted last.
        virtual void frameChosen() = 0;
        virtual void steps(int frames) = 0;
        virtual void rangeMarked(int one, int other) = 0;
        virtual void rangeCleared() = 0;
        /// What to paint now. Valid until the next call.
        [[nodiscard]] virtual const TimelineMarks& marks() = 0;
    };

    [[nodiscard]] std::u16string GetClass() const override { return u"Timeline"; }

    /// Null: for none.
    void setListener(Listener* listener) { m_listener = listener; }
    /// A clip without frames: there is nothing to show or to do.
    void showClip(int frames, double framesPerSecond);
    void showFrame(int frame);
    void showRange(const std::optional<FrameSpan>& span);
    /// Frames that something offers to change, striped. Empty: none.
    void showOffered(const zone::FrameRange& frames);
    /// Shows the whole clip.
    void fit();
    /// Takes back the drag that is going on: the frame, or the range, of its press is back. False
    /// when there is none.
    bool cancel();
    [[nodiscard]] const TimeScale& scale() const { return m_scale; }

    void SetPos(const Rect& pos) override;
    bool DoEvent(const toolkit::TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    void forgetInput() override { m_drag = Drag::none; }
    [[nodiscard]] bool isFocusable() const override { return m_frames > 0; }
    [[nodiscard]] bool isInteractive() const override { return true; }
    [[nodiscard]] platform::PointerShape pointerShapeAt(Point point) const override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::slider;
    }
    /// "62 of 99, 0:02.48, active, key".
    [[nodiscard]] std::u16string accessibleValue() const override;

private:
    enum class Drag { none, frame, range, begin, end };

    void press(const platform::Event& event);
    void release();
    void dragTo(int x);
    bool wheel(const platform::Event& event);
    void scrollTo(int frame);
    /// The end of the range that can be dragged at a point.
    [[nodiscard]] Drag gripAt(Point point) const;
    void invalidatePlayhead();

    Listener* m_listener = nullptr; ///< not owned
    TimeScale m_scale;
    int m_frames = 0;
    double m_framesPerSecond = 1;
    int m_frame = 0;
    std::optional<FrameSpan> m_range;
    zone::FrameRange m_offered;
    Drag m_drag = Drag::none;
    int m_anchor = 0; ///< the end of the range that stays
    // What the press found.
    int m_pressFrame = 0;
    std::optional<FrameSpan> m_pressRange;
    int m_wheel = 0; ///< of a notch, not used yet
};

} // namespace zoneedit
