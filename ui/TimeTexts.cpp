#include "ui/TimeTexts.h"

#include <array>
#include <cstddef>

#include "core/Services.h"
#include "core/Text.h"
#include "platform/Clock.h"

namespace ui {
namespace {

platform::LocalTime local(std::int64_t time) {
    return core::services().clock->localTime(time);
}

platform::LocalTime now() {
    return local(core::services().clock->now());
}

std::string twoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::u16string timeText(std::int64_t time) {
    const platform::LocalTime at = local(time);
    return core::displayText(twoDigits(at.hour) + ":" + twoDigits(at.minute));
}

std::u16string dateText(std::int64_t time) {
    static constexpr std::array kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const platform::LocalTime at = local(time);
    const std::string day =
        std::to_string(at.day) + " " + kMonths.at(static_cast<std::size_t>(at.month - 1));
    return core::displayText(at.year == now().year ? day : day + " " + std::to_string(at.year));
}

bool isToday(std::int64_t time) {
    const platform::LocalTime at = local(time);
    const platform::LocalTime today = now();
    return at.year == today.year && at.month == today.month && at.day == today.day;
}

} // namespace ui
