// A control that owns others. They are placed by their "pos", or fill it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessible.h"
#include "toolkit/controls/CControlUI.h"

namespace toolkit {

class CContainerUI : public CControlUI {
public:
    CContainerUI() = default;
    ~CContainerUI() override;

    [[nodiscard]] std::u16string GetClass() const override { return u"Container"; }
    [[nodiscard]] void* GetInterface(std::u16string_view name) override;

    /// Takes `control` as the last one and returns it (not owned by the caller); null, and the
    /// control is dropped, when this container does not take its kind.
    virtual CControlUI* Add(std::unique_ptr<CControlUI> control);
    /// As Add, in front of the control at `index`; null when index is not 0 to GetCount().
    virtual CControlUI* AddAt(std::unique_ptr<CControlUI> control, int index);
    /// Makes a T and adds it. Null when the container does not take its kind.
    template <class T>
    T* AddNew() {
        return controlCast<T>(Add(std::make_unique<T>()));
    }

    [[nodiscard]] virtual int GetCount() const { return static_cast<int>(m_items.size()); }
    /// Null when there is no such index. Not owned by the caller.
    [[nodiscard]] virtual CControlUI* GetItemAt(int index) const;
    /// -1 when `control` is none of the container's own.
    [[nodiscard]] virtual int GetItemIndex(const CControlUI* control) const;
    /// False when there is no such index. Safe inside an event of the removed control: it leaves
    /// the window at once and is destroyed after the event.
    virtual bool RemoveAt(int index);
    virtual void RemoveAll();

    /// Space between the container's edge and its content: left, top, right, bottom.
    void SetInset(const Rect& inset);
    [[nodiscard]] const Rect& GetInset() const { return m_inset; }

    void SetPos(const Rect& pos) override;
    bool SetAttribute(std::u16string_view name, std::u16string_view value) override;
    void DoPaint(platform::Canvas& canvas, const Rect& dirty) override;

    [[nodiscard]] int childCount() const override { return static_cast<int>(m_items.size()); }
    [[nodiscard]] CControlUI* childAt(int index) const override;
    [[nodiscard]] CControlUI* controlAt(Point point, Meeting kind) override;
    void attach(CPaintManagerUI* manager, CControlUI* parent) override;
    [[nodiscard]] platform::AccessibleRole accessibleRole() const override;

protected:
    /// Places the children inside the content rectangle; part of SetPos.
    virtual void layoutChildren(const Rect& content);
    [[nodiscard]] Rect contentRect() const;
    /// Moves the child with a "pos" to where its anchor puts that in `content`; false for a child
    /// without.
    bool placeFixed(CControlUI& child, const Rect& content) const;
    [[nodiscard]] const std::vector<std::unique_ptr<CControlUI>>& items() const { return m_items; }
    /// Paints one child, grown to the whole child where its kind asks for that.
    static void paintChild(platform::Canvas& canvas, const Rect& dirty, CControlUI& child);
    /// Hands a control that left the container to the window, which destroys it when that is safe.
    void retire(std::unique_ptr<CControlUI> control);

private:
    std::vector<std::unique_ptr<CControlUI>> m_items;
    Rect m_inset;
    std::optional<Size> m_size;     ///< for which the children's places are made
    std::optional<Size> m_designed; ///< the same of the content; else as in the first layout
};

} // namespace toolkit
