#include <array>
#include <chrono>
#include <cstdint>
#include <string>

#include <windows.h>

#include "platform/Clock.h"
#include "platform/Immortal.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Time.h"

namespace platform {

namespace {

class Win32Clock final : public Clock {
public:
    std::int64_t now() override {
        FILETIME time{};
        GetSystemTimeAsFileTime(&time);
        return win32::secondsSince1970(time);
    }

    // Not GetTickCount64, which goes in steps of 16: longer than half a frame of a video.
    std::int64_t ticks() override {
        const auto passed = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
    }

    LocalTime localTime(std::int64_t time) override {
        const FILETIME moment = win32::fileTime(time);
        SYSTEMTIME utc{};
        SYSTEMTIME local{};
        if (FileTimeToSystemTime(&moment, &utc) == 0 ||
            SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local) == 0) {
            return {};
        }
        return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
    }

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
