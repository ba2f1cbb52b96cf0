#include <array>

#include <windows.h>

#include "platform/Clock.h"
#include "platform/Immortal.h"
#include "platform/win32/WideText.h"

namespace platform {

namespace {

class Win32Clock final : public Clock {
public:
    std::string localTimeText() override {
        std::array<wchar_t, 256> text{};
        const int length = GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, nullptr, L"hh':'mm':'ss tt",
                                           text.data(), static_cast<int>(text.size()));
        return length > 0 ? win32::narrow(text.data()) : "12:00:00 AM";
    }
};

} // namespace

Clock& nativeClock() {
    static Immortal<Win32Clock> clock;
    return clock.value;
}

} // namespace platform
