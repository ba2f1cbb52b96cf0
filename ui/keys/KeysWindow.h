// The list of keys, in which the author can choose others; stands beside the window it was opened
// from. UI thread only.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Texts.h"
#include "edit/Observers.h"
#include "toolkit/controls/CControlUI.h"
#include "ui/EditorWindow.h"
#include "ui/WindowContext.h"
#include "ui/commands/Command.h"
#include "ui/keys/KeyList.h"

namespace toolkit {
struct TNotifyUI;
}

namespace ui {

class KeyTable;

class KeysWindow final : public EditorWindow {
public:
    /// Never empty.
    [[nodiscard]] static std::shared_ptr<KeysWindow> create(const WindowContext& context);
    explicit KeysWindow(const WindowContext& context);

    [[nodiscard]] std::u16string GetWindowClassName() const override { return u"KeysWindow"; }
    [[nodiscard]] std::string GetSkinFile() const override { return "Keys.xml"; }
    void InitWindow() override;
    void Notify(toolkit::TNotifyUI& message) override;
    std::unique_ptr<toolkit::CControlUI> CreateControl(std::u16string_view className) override;

private:
    void bindCommands();
    /// Shows the keys that the find box asks for.
    void fill();
    void copy();
    /// The chosen row waits for a key.
    void change();
    void stopWaiting();
    /// A key was pressed for the row that waits.
    void take(const KeyChord& chord);
    /// Gives the chosen row's command this key in place of the row's.
    void choose(const KeyChord& chord);
    void resetChosen();
    /// The chosen row's line; null when its key cannot be chosen.
    [[nodiscard]] const KeyLine* changeable();
    void say(core::Text text);

    KeyTable* m_table = nullptr;    ///< owned by the window's controls
    std::vector<KeyGroup> m_groups; ///< shown
    edit::Subscription m_changed;
};

} // namespace ui
