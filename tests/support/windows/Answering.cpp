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
        switch (answer) {
        case Answer::yes:
            dialog.click(u"ButtonYes");
            break;
        case Answer::no:
            dialog.click(u"ButtonNo");
            break;
        case Answer::escape:
            dialog.press(platform::Key::escape);
            break;
        case Answer::close:
            input().requestClose(dialog.native());
            break;
        }
    };
}

} // namespace test
