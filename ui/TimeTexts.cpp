#include "ui/TimeTexts.h"

#include <array>
#include <cstddef>

#include "core/Services.h"
#include "core/Text.h"
#include "core/Texts.h"
#include "platform/Clock.h"
#include "ui/FigureTexts.h"

namespace ui {
namespace {

platform::LocalTime local(std::int64_t time) {
    return core::services().clock->localTime(time);
}

platform::LocalTime now() {
    return local(core::services().clock->now());
}

constexpr std::array kMonths{
    "Month.January|January"_tr, "Month.February|February"_tr, "Month.March|March"_tr,
    "Month.April|April"_tr,     "Month.May|May"_tr,           "Month.June|June"_tr,
    "Month.July|July"_tr,       "Month.August|August"_tr,     "Month.September|September"_tr,
    "Month.October|October"_tr, "Month.November|November"_tr, "Month.December|December"_tr};
constexpr std::array kShortMonths{
    "MonthShort.January|Jan"_tr, "MonthShort.February|Feb"_tr, "MonthShort.March|Mar"_tr,
    "MonthShort.April|Apr"_tr,   "MonthShort.May|May"_tr,      "MonthShort.June|Jun"_tr,
    "MonthShort.July|Jul"_tr,    "MonthShort.August|Aug"_tr,   "MonthShort.September|Sep"_tr,
    "MonthShort.October|Oct"_tr, "MonthShort.November|Nov"_tr, "MonthShort.December|Dec"_tr};

std::u16string dateText(std::int64_t time, const std::array<core::Text, 12>& months) {
    const platform::LocalTime at = local(time);
    const std::u16string month = core::tr(months.at(static_cast<std::size_t>(at.month - 1)));
    const std::string day =
        at.day == 1 ? core::trStored("Date.First|1"_tr) : std::to_string(at.day);
    return at.year == now().year ? core::tr("Date.Day|{0} {1}"_tr, day, month)
                                 : core::tr("Date.Whole|{0} {1} {2}"_tr, day, month, at.year);
}

bool isSameDay(const platform::LocalTime& one, const platform::LocalTime& other) {
    return one.year == other.year && one.month == other.month && one.day == other.day;
}

/// Counted from two hours before midnight: a day on which clocks change is an hour longer or
/// shorter.
bool isYesterday(std::int64_t time) {
    const platform::LocalTime at = now();
    const std::int64_t passed = (std::int64_t{at.hour} * 60 + at.minute) * 60 + at.second;
    return isSameDay(local(time), local(core::services().clock->now() - passed - 2 * 60 * 60));
}

} // namespace

std::u16string timeText(std::int64_t time) {
    const platform::LocalTime at = local(time);
    return core::tr("Time.OfDay|{0}:{1}"_tr, twoDigits(at.hour), twoDigits(at.minute));
}

std::u16string nowText() {
    if (core::isEnglish()) {
        return core::displayText(core::services().clock->localTimeText());
    }
    const platform::LocalTime at = now();
    return core::tr("Time.Exact|{0}:{1}:{2}"_tr, twoDigits(at.hour), twoDigits(at.minute),
                    twoDigits(at.second));
}

std::u16string dateText(std::int64_t time) {
    return dateText(time, kShortMonths);
}

std::u16string dayText(std::int64_t time) {
    if (isToday(time)) {
        return core::tr("Today"_tr);
    }
    return isYesterday(time) ? core::tr("Yesterday"_tr) : dateText(time, kMonths);
}

bool isRecentDay(std::int64_t time) {
    return isToday(time) || isYesterday(time);
}

bool isToday(std::int64_t time) {
    return isSameDay(local(time), now());
}

} // namespace ui
