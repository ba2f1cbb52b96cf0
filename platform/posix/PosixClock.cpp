#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>

#include "platform/Clock.h"
#include "platform/Immortal.h"

namespace platform {
namespace {

class PosixClock final : public Clock {
public:
    std::int64_t now() override { return std::time(nullptr); }

    std::int64_t ticks() override {
        const auto passed = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
    }

    LocalTime localTime(std::int64_t time) override {
        const std::time_t moment = time;
        std::tm local{};
        if (::localtime_r(&moment, &local) == nullptr) {
            return {};
        }
        return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                local.tm_hour,        local.tm_min,     local.tm_sec};
    }

    std::string localTimeText() override {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        if (::localtime_r(&now, &local) == nullptr) {
            return "12:00:00 AM";
        }
        // Not strftime: many languages have no text for %p.
        const int hour = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%02d:%02d:%02d %s", hour, local.tm_min,
                      local.tm_sec, local.tm_hour < 12 ? "AM" : "PM");
        return text.data();
    }
};

} // namespace

Clock& nativeClock() {
    static Immortal<PosixClock> clock;
    return clock.value;
}

} // namespace platform
