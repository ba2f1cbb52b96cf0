// The scene as a map: a node for each branch with its actions, and lines to the branches that they
// lead to. Click a node, or go there by the arrow keys, and "itemselect" is sent; a double click or
// Enter sends "itemactivate". The wheel zooms about the pointer, dragging moves the view; dragging
// from an action's row leads the action elsewhere. UI thread only.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "map/MapLayout.h"
#include "map/MapScene.h"
#include "platform/Accessible.h"
#include "platform/Bitmap.h"
#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Event.h"
#include "platform/Path.h"
#include "platform/WindowParts.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/skin/Palette.h"
#include "ui/map/MapLayouts.h"

namespace ui {

/// Steps of its zoom, of which 0 is the smallest.
struct StepRange {
    int least = 0;
    int most = 0;
};

class SceneMap final : public toolkit::CControlUI {
public:
    using Picture = std::shared_ptr<const platform::Bitmap>;

    SceneMap();

    /// A branch as the scene before numbers it, and as the new one does; -1 for none.
    struct Kept {
        int before = -1;
        int now = -1;
    };
    /// `kept` keeps its place in the view. Without it, or when the whole scene was in view and the
    /// chosen branch is new, the new scene is fitted.
    void show(std::shared_ptr<const map::MapScene> scene, std::shared_ptr<MapLayouts> layouts,
              int chosen, Kept kept);
    /// Null for none; called while painting.
    void setStills(std::function<Picture(int branch)> stills) { m_stills = std::move(stills); }
    /// How many errors a branch has; called while painting.
    void setErrors(std::function<int(int branch)> errors) { m_errors = std::move(errors); }
    /// They may be others now.
    void errorsChanged();
    /// Sends nothing; -1 for none.
    void choose(int branch);
    [[nodiscard]] int chosen() const { return m_chosen; }
    /// Rings, while something is looked for.
    void setFound(std::vector<int> branches);

    /// To the next step; `by` above 0 enlarges.
    void zoom(int by);
    /// To the largest step of all that shows the whole scene.
    void fit();
    [[nodiscard]] int zoomPercent() const;
    /// Called whenever the zoom has changed.
    void setOnZoom(std::function<void()> onZoom) { m_onZoom = std::move(onZoom); }
    /// Called when an action of the branch was dragged to another branch, or with -1 to the ground.
    void setOnLink(std::function<void(int branch, int action, int target)> onLink) {
        m_onLink = std::move(onLink);
    }
    /// Where a branch is in the window; empty when there is none.
    [[nodiscard]] Rect placeOf(int branch) const;

    [[nodiscard]] std::u16string GetClass() const override { return u"SceneMap"; }
    [[nodiscard]] bool isFocusable() const override { return true; }
    [[nodiscard]] bool claimsKey(const platform::Event& event) const override;
    bool DoEvent(const toolkit::TEventUI& event) override;
    bool notePress(const toolkit::TEventUI& event) override;
    [[nodiscard]] platform::PointerShape pointerShapeAt(Point point) const override;
    void SetPos(const Rect& pos) override;
    void forgetInput() override;
    [[nodiscard]] std::u16string toolTipAt(Point point) const override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::tree;
    }
    /// What it says of the chosen branch.
    [[nodiscard]] std::u16string accessibleValue() const override;
    [[nodiscard]] int accessibleChildCount() const override;
    [[nodiscard]] platform::Accessible* accessibleChild(int index) const override;
    [[nodiscard]] int accessibleIndexOf(const platform::Accessible& child) const override;

protected:
    void paintStatus(platform::Canvas& canvas) override;

private:
    class Item; ///< of the tree that assistive technology sees: a branch, or one of its actions

    struct View { ///< the map's point (x, y) stands in the control's top left corner
        double x = 0;
        double y = 0;
    };

    [[nodiscard]] map::NodeForm form() const;
    [[nodiscard]] double scale() const;
    [[nodiscard]] const map::MapLayout& layout() const;
    [[nodiscard]] int branchAt(Point point) const;
    /// The branch that is shown in its place: of a folded chain one shows for all.
    [[nodiscard]] int faceOf(int branch) const;
    [[nodiscard]] toolkit::Tone toneOf(const map::MapLine& line) const;
    /// The action of the branch whose row is there; -1 for none.
    [[nodiscard]] int actionAt(int branch, Point point) const;
    /// To the largest of these steps that shows all, or to the least.
    void fitWithin(StepRange steps);
    [[nodiscard]] Size room() const;
    [[nodiscard]] bool fitsInto(const Size& room) const;
    [[nodiscard]] std::u16string textOf(int branch) const;
    [[nodiscard]] std::u16string textOf(int branch, int action) const;
    [[nodiscard]] Rect inWindow(int x, int y, int width, int height) const;
    void setStep(int step, Point fixed);
    void showNode(int branch);
    void pick(int branch);
    void tellValue();
    bool key(const platform::Event& event);
    void press(const platform::Event& event);
    void doublePress(Point point);
    void drag(Point point);
    void release(Point point);
    void go(platform::Key key);
    void turnWheel(const platform::Event& event);

    [[nodiscard]] platform::Color color(toolkit::Tone tone) const;
    [[nodiscard]] platform::PointF pointInWindow(const map::MapPoint& point) const;
    void paintLines(platform::Canvas& canvas, bool near) const;
    void paintLine(platform::Canvas& canvas, const map::MapLine& line, bool near) const;
    void paintBackLines(platform::Canvas& canvas) const;
    void paintLink(platform::Canvas& canvas) const;
    void paintEmpty(platform::Canvas& canvas) const;
    void paintHeading(platform::Canvas& canvas) const;
    void paintStub(platform::Canvas& canvas, const Rect& node) const;
    void paintNode(platform::Canvas& canvas, int branch) const;
    void paintPile(platform::Canvas& canvas, const Rect& box) const;
    void paintEdge(platform::Canvas& canvas, const Rect& box, int width,
                   platform::Color color) const;
    void paintStill(platform::Canvas& canvas, int branch, const Rect& box) const;
    void paintRows(platform::Canvas& canvas, int branch, const Rect& box) const;
    void paintBadge(platform::Canvas& canvas, const map::MapAction& action, const Rect& box) const;
    void paintText(platform::Canvas& canvas, const std::string& text, const Rect& box, int font,
                   platform::Color color) const;
    using CControlUI::paintText;

    std::shared_ptr<const map::MapScene> m_scene;
    std::shared_ptr<MapLayouts> m_layouts;
    /// Of the chosen branch, made when they are painted.
    mutable std::optional<std::vector<map::MapLine>> m_backLines;
    mutable std::vector<std::shared_ptr<Item>> m_items; ///< by branch, made when asked for
    std::function<Picture(int)> m_stills;
    std::function<int(int)> m_errors;
    std::function<void()> m_onZoom;
    std::function<void(int, int, int)> m_onLink;
    std::vector<int> m_found;
    int m_chosen = -1;
    int m_step; ///< of the zoom
    View m_view;
    bool m_isFitted = false; ///< nobody has moved the view since
    StepRange m_fittedSteps;
    std::u16string m_toldValue;
    int m_linked = -1; ///< action of the chosen branch that is pressed
    Point m_pointer;   ///< while pressed
    int m_turned = 0;  ///< of the wheel, less than a notch
    bool m_isPressed = false;
    bool m_isDragged = false;
    bool m_isPicked = false; ///< by the press
    int m_pressed = -1;      ///< the branch that the last press met
    Point m_pressedAt;
    View m_pressedView;
};

} // namespace ui
