// The picture of the preview: the frame on show, as large as fits, with the branch's name and, if
// wanted, the outlines of the zones that can be clicked. Clicks and letters go to its listener,
// which it also wakes many times a second while it runs. UI thread only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessible.h"
#include "platform/Bitmap.h"
#include "platform/Canvas.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"

namespace ui {

class VideoPreview final : public toolkit::CControlUI {
public:
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual void tick() = 0;
        /// `pixel`: of the zone area; it lies in the picture.
        virtual void clicked(Point pixel) = 0;
        /// A letter, "A" to "Z".
        virtual void typed(char letter) = 0;
    };
    struct Outline {
        std::u16string name;
        std::vector<Point> points; ///< in the zone area

        friend bool operator==(const Outline&, const Outline&) = default;
    };

    [[nodiscard]] std::u16string GetClass() const override { return u"VideoPreview"; }

    /// Null for none; it outlives its use here.
    void setListener(Listener* listener) { m_listener = listener; }
    /// Whether its listener is woken.
    void run(bool runs);
    /// As playback::PictureSink takes it.
    void showPicture(const std::uint8_t* pixels, Size size);
    void showNothing();
    [[nodiscard]] bool hasPicture() const { return !m_picture.isEmpty(); }
    /// The name of the branch whose picture is on show.
    void setBranch(std::u16string_view name);
    void setOutlines(std::vector<Outline> outlines);

    /// As high as the width asks for; at most half of the pane as far as the lists below keep a
    /// row, or half of what there is.
    [[nodiscard]] Size EstimateSize(Size available) const override;
    bool DoEvent(const toolkit::TEventUI& event) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;
    [[nodiscard]] bool isFocusable() const override { return true; }
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    [[nodiscard]] platform::PointerShape pointerShapeAt(Point point) const override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::picture;
    }
    [[nodiscard]] std::u16string accessibleName() const override;

private:
    [[nodiscard]] Rect pictureRect() const;
    [[nodiscard]] Point zonePixel(Point at) const;
    void paintOutline(platform::Canvas& canvas, const Outline& outline) const;
    void paintTag(platform::Canvas& canvas, std::u16string_view text, Point at) const;
    void paintHint(platform::Canvas& canvas) const;

    Listener* m_listener = nullptr;
    platform::Bitmap m_picture; ///< empty: none yet
    std::u16string m_branch;
    std::vector<Outline> m_outlines;
};

} // namespace ui
