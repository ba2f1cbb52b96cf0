#include "ui/Confirmation.h"

#include <memory>
#include <string_view>

#include "core/Log.h"
#include "core/Text.h"
#include "toolkit/input/FocusKeeper.h"
#include "toolkit/window/CPaintManagerUI.h"
#include "ui/commands/CommandSet.h"
#include "ui/commands/ConfirmationCommands.h"

namespace ui {

namespace {

constexpr std::u16string_view kTitle = u"Title";
constexpr std::u16string_view kLabel = u"ConfirmationLabel";
constexpr std::u16string_view kNoButton = u"ButtonNo";

} // namespace

Confirmation::Confirmation(const WindowContext& context, ConfirmCallback& asker,
                           const std::string& title, const std::string& message)
    : EditorWindow(context, {kConfirmationCommands}), m_asker(asker), m_title(title),
      m_message(message) {
    commands().bind(command::kYes, [this] { answerAndClose(ConfirmCallback::kYes); });
    commands().bind(command::kNo, [this] { answerAndClose(ConfirmCallback::kNo); });
}

void Confirmation::ask(const WindowContext& context, ConfirmCallback& asker,
                       const std::string& title, const std::string& message) {
    const auto dialog = std::make_shared<Confirmation>(context, asker, title, message);
    if (!dialog->runAbove(asker, core::displayText(title))) {
        core::Log::get()->Error("Unable to show the question \"%s\"", message.c_str());
    }
}

void Confirmation::InitWindow() {
    setTextOf(kTitle, core::displayText(m_title));
    setTextOf(kLabel, core::displayText(m_message));
    // A silent dismissal would mean yes for some questions: the keyboard starts on No.
    if (toolkit::CControlUI* no = findControl(kNoButton)) {
        GetPaintManager().SetFocus(no);
        // Shown from the start, however the question came up: Enter and Space answer it.
        GetPaintManager().focusKeeper().setKeyboardUse(true);
    }
}

void Confirmation::answerAndClose(std::uint8_t answer) {
    m_asker.SetAnswer(answer);
    Close(1);
}

} // namespace ui
