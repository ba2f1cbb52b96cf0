// The modal yes/no dialog. The answer goes to the asker's ConfirmCallback, never back as a result.
// Used by the branch editor and the zone editor. UI thread only.
#pragma once

#include <cstdint>
#include <string>

#include "ui/ConfirmCallback.h"
#include "ui/EditorWindow.h"

namespace ui {

class Confirmation final : public EditorWindow {
public:
    Confirmation(const WindowContext& context, ConfirmCallback& asker, const std::string& title,
                 const std::string& message);

    /// Asks and waits; the asking window takes no input meanwhile. The answer is written only by a
    /// press of a button: the asker sets it before to what a dismissal shall mean. When the dialog
    /// cannot be made the answer stays as it is too, and the log says so.
    static void ask(const WindowContext& context, ConfirmCallback& asker, const std::string& title,
                    const std::string& message);

    [[nodiscard]] std::u16string GetWindowClassName() const override {
        return u"ConfirmationWindow";
    }
    [[nodiscard]] std::string GetSkinFile() const override { return "Confirmation.xml"; }
    void InitWindow() override;

private:
    void answerAndClose(std::uint8_t answer);

    ConfirmCallback& m_asker;
    std::string m_title;
    std::string m_message;
};

} // namespace ui
