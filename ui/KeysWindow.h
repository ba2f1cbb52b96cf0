// The list of keys; stands beside the window it was opened from. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/EditorWindow.h"
#include "ui/KeyList.h"
#include "ui/WindowContext.h"

namespace toolkit {
class CContainerUI;
struct TNotifyUI;
} // namespace toolkit

namespace ui {

class KeysWindow final : public EditorWindow {
public:
    /// Never empty.
    [[nodiscard]] static std::shared_ptr<KeysWindow> create(const WindowContext& context);
    explicit KeysWindow(const WindowContext& context);

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"KeysWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Keys.xml"; }
    void InitWindow() override;
    void Notify(toolkit::TNotifyUI& message) override;

private:
    /// Shows the keys that the find box asks for.
    void fill();
    static void addGroup(toolkit::CContainerUI& list, const KeyGroup& group, int left, int& top);
    void copy();

    std::vector<KeyGroup> m_groups; ///< shown
};

} // namespace ui
