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

/// With as many letters of the month's name.
std::u16string dateText(std::int64_t time, std::size_t letters) {
    static constexpr std::array kMonths{"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
    const platform::LocalTime at = local(time);
    const std::string month = kMonths.at(static_cast<std::size_t>(at.month - 1));
    const std::string day = std::to_string(at.day) + " " + month.substr(0, letters);
    return core::displayText(at.year == now().year ? day : day + " " + std::to_string(at.year));
}

} // namespace

std::u16string timeText(std::int64_t time) {
    const platform::LocalTime at = local(time);
    return core::displayText(twoDigits(at.hour) + ":" + twoDigits(at.minute));
}

std::u16string dateText(std::int64_t time) {
    return dateText(time, 3);
}

std::u16string dayText(std::int64_t time) {
    constexpr std::int64_t kSecondsOfDay = 86'400;
    if (isToday(time)) {
        return u"Today";
    }
    return isToday(time + kSecondsOfDay) ? u"Yesterday" : dateText(time, std::string::npos);
}

bool isToday(std::int64_t time) {
    const platform::LocalTime at = local(time);
    const platform::LocalTime today = now();
    return at.year == today.year && at.month == today.month && at.day == today.day;
}

} // namespace ui
