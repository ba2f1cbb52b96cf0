// A control: it has a name, a text and a rectangle, takes events and paints itself. Everything
// in a window derives from it. UI thread only.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Accessible.h"
#include "platform/Canvas.h"
#include "platform/Color.h"
#include "platform/Geometry.h"
#include "platform/WindowParts.h"
#include "toolkit/input/TEventUI.h"
#include "toolkit/layout/Anchor.h"
#include "toolkit/skin/IconSet.h"
#include "toolkit/skin/SkinColor.h"

namespace toolkit {

class CPaintManagerUI;

/// What a control at a point is looked for by: it takes the mouse, or does that or has a tool tip
/// there. A label that leaves the mouse to what is below it can still be read whole.
enum class Meeting { mouse, tip };

class CControlUI : public platform::Accessible {
public:
    using Rect = platform::Rect;
    using Size = platform::Size;
    using Point = platform::Point;

    CControlUI() = default;
    ~CControlUI() override;
    CControlUI(const CControlUI&) = delete;
    CControlUI& operator=(const CControlUI&) = delete;

    /// The kind, as a layout names its element: "Control", "Button", ...
    [[nodiscard]] virtual std::u16string GetClass() const { return u"Control"; }
    /// This object as the kind `name` (exact), or null when it is none: a checked cast.
    [[nodiscard]] virtual void* GetInterface(std::u16string_view name);

    [[nodiscard]] const std::u16string& GetName() const { return m_name; }
    void SetName(std::u16string_view name) { m_name = name; }
    [[nodiscard]] virtual std::u16string GetText() const { return m_text; }
    /// Repaints; sends nothing.
    virtual void SetText(std::u16string_view text);
    [[nodiscard]] const std::u16string& GetToolTip() const { return m_toolTip; }
    void SetToolTip(std::u16string_view text) { m_toolTip = text; }
    /// Has a screen reader read out the name, the text of a label: at once if it is urgent, else
    /// when it has time.
    void announce(bool urgent);
    /// The accessible name of a control without fixed text.
    void SetLabel(std::u16string_view text);
    /// Text that the program keeps with the control; never shown.
    [[nodiscard]] const std::u16string& GetUserData() const { return m_userData; }
    void SetUserData(std::u16string_view text) { m_userData = text; }

    /// The width of the border on each side, which takes no room from what is inside.
    void SetBorderSize(const Rect& size);

    /// True when neither the control nor anything around it is disabled.
    [[nodiscard]] bool IsEnabled() const;
    /// A disabled control loses the focus, without a notification.
    virtual void SetEnabled(bool enabled);
    /// Not disabled itself, whatever is around it.
    [[nodiscard]] bool isOwnEnabled() const { return m_enabled; }
    /// True when neither the control nor anything around it is hidden.
    [[nodiscard]] bool IsVisible() const;
    virtual void SetVisible(bool visible);
    /// Not hidden itself, whatever is around it.
    [[nodiscard]] bool isShown() const { return m_visible; }
    [[nodiscard]] bool IsFocused() const;
    /// Whether the mouse meets it; attribute "mouse". If not, what is below gets its presses and
    /// movements, except where a child of its own is.
    [[nodiscard]] bool takesMouse() const { return m_takesMouse; }

    /// Sizes in pixels; 0 means: as large as the place allows (or as the control's kind needs).
    void SetFixedWidth(int width);
    void SetFixedHeight(int height);
    [[nodiscard]] const Size& GetFixedSize() const { return m_fixed; }
    [[nodiscard]] int GetFixedWidth() const { return m_fixed.width; }
    void SetMinWidth(int width);
    void SetMinHeight(int height);
    /// 0: no upper limit.
    void SetMaxWidth(int width);
    void SetMaxHeight(int height);
    /// Space left free around the control inside its cell: left, top, right, bottom.
    void SetPadding(const Rect& padding);
    [[nodiscard]] const Rect& GetPadding() const { return m_padding; }
    /// The place relative to the parent's content that a layout's "pos" gave; a control with one
    /// stands there, outside any row or column.
    [[nodiscard]] const std::optional<Rect>& GetPlace() const { return m_place; }
    void SetPlace(const Rect& place);
    /// How that place follows the container's size.
    [[nodiscard]] const Anchor& anchor() const { return m_anchor; }

    /// Null for the root and for a control that stands in no container. Not owned.
    [[nodiscard]] CControlUI* GetParent() const { return m_parent; }
    /// Null while the control is in no window. Not owned.
    [[nodiscard]] CPaintManagerUI* GetManager() const { return m_manager; }
    /// In window pixels, as the last layout left it.
    [[nodiscard]] const Rect& GetPos() const { return m_pos; }
    /// Called by the layout; invalidates what the control leaves and what it takes.
    virtual void SetPos(const Rect& pos);
    /// The row or column that it stands in is about to share out its content.
    virtual void beforeLayout(Size /*content*/) {}
    /// The size the control wants; a side of 0 leaves that side to the layout.
    [[nodiscard]] virtual Size EstimateSize(Size available) const;
    /// `size` within the control's minimum and maximum.
    [[nodiscard]] Size limited(Size size) const;

    /// Asks for a repaint of the control's rectangle.
    void Invalidate();
    /// Asks for a layout pass and a repaint.
    void NeedUpdate();

    /// Sets an attribute as a layout does. False when the kind has no such attribute; a value that
    /// does not parse leaves things as they were.
    virtual bool SetAttribute(std::u16string_view name, std::u16string_view value);

    /// True when the event was handled; wheel and key events otherwise go on to the parent.
    virtual bool DoEvent(const TEventUI& event);
    /// Paints what touches `dirty`; the canvas is clipped to the parent.
    virtual void DoPaint(platform::Canvas& canvas, const Rect& dirty);
    /// True for a control that can only be painted as a whole: its dirty rectangle grows to all of
    /// it.
    [[nodiscard]] virtual bool PaintsWhole() const { return false; }

    /// Whether it can have the focus at all: enabled, visible and of a kind that uses keys.
    [[nodiscard]] bool CanTakeFocus() const { return isFocusable() && IsEnabled() && IsVisible(); }
    /// Of a kind that uses keys.
    [[nodiscard]] virtual bool isFocusable() const { return false; }
    /// Reached by the Tab key; attribute "tabstop".
    [[nodiscard]] bool isTabStop() const { return m_tabStop; }
    /// True for kinds that do something with a press: the caption does not drag from them.
    [[nodiscard]] virtual bool isInteractive() const { return isFocusable(); }
    /// Whether a press at a point of it does something: the window is not sized there.
    [[nodiscard]] virtual bool takesPressAt(Point /*at*/) const { return isInteractive(); }
    /// True for a kind that types: it always shows the focus ring and loses the focus to any
    /// press elsewhere.
    [[nodiscard]] virtual bool takesText() const { return false; }
    /// Whether it uses a key itself while it has the focus. All others may be the window's
    /// shortcuts.
    [[nodiscard]] virtual bool claimsKey(const platform::Event& /*event*/) const { return false; }
    /// The shape of the pointer at a point of it: tells what a press there would do. A hand for
    /// what the attribute "link" marks as leading somewhere.
    [[nodiscard]] virtual platform::PointerShape pointerShapeAt(Point /*point*/) const {
        return m_isLink ? platform::PointerShape::hand : platform::PointerShape::arrow;
    }
    /// Called before a press (buttonDown or doubleClick) reaches the control or anything inside it.
    /// True: it reaches nothing.
    virtual bool notePress(const TEventUI& /*event*/) { return false; }
    /// The control was hidden, disabled or removed, or something around it was: it drops a
    /// press, a held key and the hover state without an event. Sends nothing.
    virtual void forgetInput() {}
    /// What a tool tip over `point` says; the tool tip text unless a kind knows better.
    [[nodiscard]] virtual std::u16string toolTipAt(Point point) const;
    /// The image attribute of the focus ring; empty: the window's.
    [[nodiscard]] const std::u16string& focusedImage() const { return m_focusedImage; }
    /// One of the skin's icons; empty: none. Attribute "icon".
    void SetIcon(std::u16string_view name);

    /// The child controls, in painting and Tab order. Not owned by the caller.
    [[nodiscard]] virtual int childCount() const { return 0; }
    [[nodiscard]] virtual CControlUI* childAt(int /*index*/) const { return nullptr; }
    /// The child that the Tab key comes to after `child` or, `backward`, before it; with null, the
    /// first or last one. Null when there is none.
    [[nodiscard]] virtual CControlUI* childBeside(const CControlUI* child, bool backward) const;
    [[nodiscard]] bool isInside(const CControlUI* ancestor) const;
    /// The first control below this one with `name` (exact, case-sensitive); null when none.
    [[nodiscard]] CControlUI* FindSubControl(std::u16string_view name) const;
    /// The topmost visible control at `point` that the mouse meets, disabled ones included; null
    /// when there is none.
    [[nodiscard]] virtual CControlUI* controlAt(Point point, Meeting kind);
    /// The part of `rect` (around this control) that is visible inside all its ancestors.
    [[nodiscard]] Rect visibleArea(const Rect& rect) const;
    /// The area to which painting and clicks of the children are limited.
    [[nodiscard]] virtual Rect childClip() const { return m_pos; }
    /// Scrolls whatever is needed so that `descendant` can be seen.
    virtual void reveal(CControlUI& descendant);
    /// Something inside asked for a layout pass.
    virtual void childNeedsUpdate() {}
    /// Gives `descendant` the place of the last layout where that left out what is not in view.
    virtual void settle(const CControlUI& /*descendant*/) {}
    /// Called by containers: joins or leaves (null, null) a window, with everything inside.
    virtual void attach(CPaintManagerUI* manager, CControlUI* parent);

    // platform::Accessible
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;
    [[nodiscard]] std::u16string accessibleName() const override;
    [[nodiscard]] std::u16string accessibleId() const override { return m_name; }
    [[nodiscard]] std::u16string accessibleValue() const override { return {}; }
    [[nodiscard]] platform::AccessibleState accessibleState() const override;
    [[nodiscard]] Rect accessibleRect() const override;
    [[nodiscard]] platform::Accessible* accessibleParent() const override { return m_parent; }
    [[nodiscard]] int accessibleChildCount() const override { return childCount(); }
    [[nodiscard]] platform::Accessible* accessibleChild(int index) const override;
    void accessiblePress() override {}
    void accessibleFocus() override;
    [[nodiscard]] platform::Accessible* accessibleFocused() override;
    [[nodiscard]] int accessibleCaret() const override { return -1; }

protected:
    /// The parts of DoPaint, in their order.
    virtual void paintBackground(platform::Canvas& canvas);
    virtual void paintStatus(platform::Canvas& /*canvas*/) {}
    void paintIcon(platform::Canvas& canvas);
    virtual void paintText(platform::Canvas& /*canvas*/) {}
    virtual void paintBorder(platform::Canvas& canvas);
    /// Which of its colours the icon has.
    [[nodiscard]] virtual IconState iconState() const;
    /// Where the icon is unless the layout says so; -1: in the middle.
    [[nodiscard]] virtual Point iconPlace() const { return {-1, -1}; }

    /// As the window's skin has it.
    [[nodiscard]] platform::Color paletteColor(const SkinColor& color) const;
    /// Whether the mouse meets the control itself at this point of it.
    [[nodiscard]] bool meets(Point point, Meeting kind) const;
    /// Draws the image that `attribute` names over the control; false when there is none.
    bool drawImage(platform::Canvas& canvas, const std::u16string& attribute) const;
    /// `size`; where that has no height, with the height of the image that `attribute` names.
    [[nodiscard]] Size withImageHeight(Size size, const std::u16string& attribute) const;
    /// Sends a notification from this control, unless it is in no window. True when the control is
    /// still in one afterwards.
    bool notify(std::u16string_view type, int wParam = 0);
    /// The accessible name that the layout gives: the label, else the tool tip.
    [[nodiscard]] const std::u16string& givenName() const;
    /// Notifies assistive technology, if any is listening.
    void accessibleChanged(platform::AccessibleChange change);

private:
    struct Attributes;

    CPaintManagerUI* m_manager = nullptr;
    CControlUI* m_parent = nullptr;
    std::u16string m_name;
    std::u16string m_text;
    std::u16string m_toolTip;
    std::u16string m_userData;
    std::u16string m_label;
    std::u16string m_backImage;
    std::u16string m_foreImage;
    std::u16string m_focusedImage;
    IconStyle m_icon;
    std::optional<Rect> m_place;
    Anchor m_anchor;
    Rect m_pos;
    Rect m_padding;
    Rect m_borderSize;
    Size m_fixed;
    Size m_min;
    Size m_max;
    SkinColor m_backColor;
    int m_backRadius = 0;
    SkinColor m_borderColor;
    bool m_enabled = true;
    bool m_visible = true;
    bool m_tabStop = true;
    bool m_takesMouse = true;
    bool m_isLink = false;
};

/// `control` as a T, or null when it is none (or null itself).
template <class T>
[[nodiscard]] T* controlCast(CControlUI* control) {
    return dynamic_cast<T*>(control);
}

} // namespace toolkit
