#include "tests/support/windows/Answering.h"

#include "core/Text.h"
#include "tests/support/gui/WindowDriver.h"

namespace test {

std::function<void()> answering(Answer answer, std::string* asked) {
    return [answer, asked] {
        WindowDriver dialog(topWindow());
        if (asked != nullptr) {
            *asked = core::storedText(dialog.get(u"Title").GetText()) + "|" +
                     core::storedText(dialog.get(u"ConfirmationLabel").GetText());
        }
        if (answer == Answer::escape) {
            dialog.press(platform::Key::escape);
        } else if (answer == Answer::close) {
            input().requestClose(dialog.native());
        } else {
            dialog.click(answer == Answer::yes ? u"ButtonYes" : u"ButtonNo");
        }
    };
}

} // namespace test
