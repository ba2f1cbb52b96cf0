// Moments as the windows write them. UI thread only.
#pragma once

#include <cstdint>
#include <string>

namespace ui {

/// "15:07", where the user lives.
[[nodiscard]] std::u16string timeText(std::int64_t time);
/// "15:07:41"; in English as the log has it, "03:07:41 PM".
[[nodiscard]] std::u16string nowText();
/// "12 Nov", with the year unless it is this one.
[[nodiscard]] std::u16string dateText(std::int64_t time);
/// "Today", "Yesterday" or "18 November", with the year unless it is this one.
[[nodiscard]] std::u16string dayText(std::int64_t time);
/// Whether dayText has a word for the day.
[[nodiscard]] bool isRecentDay(std::int64_t time);
/// Whether `time` is on the calendar day of now.
[[nodiscard]] bool isToday(std::int64_t time);

} // namespace ui
