#include "ui/WindowPlace.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

#include "core/EditorSettings.h"
#include "platform/Window.h"

namespace ui {

namespace {

using platform::Rect;
using platform::Size;

constexpr int kCaptionHeight = 36;
constexpr int kReach = 100; ///< least width of the caption on a screen
constexpr int kFarthest = 32767;
constexpr std::string_view kMaximized = "maximized";

/// Takes a number and the comma behind it off the front of `text`.
std::optional<int> takeNumber(std::string_view& text) {
    int number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < -kFarthest || number > kFarthest) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    if (text.starts_with(',')) {
        text.remove_prefix(1);
    }
    return number;
}

} // namespace

WindowPlace::Place WindowPlace::placeOf(const platform::NativeWindow& window) {
    return {window.normalGeometry(), window.state() == platform::WindowState::maximized};
}

/// "left,top,width,height", and ",maximized".
std::optional<WindowPlace::Place> WindowPlace::remembered() const {
    const std::string stored = m_settings != nullptr ? m_settings->getString(m_key, {}) : "";
    std::string_view text = stored;
    std::array<int, 4> numbers{};
    for (int& number : numbers) {
        const std::optional<int> taken = takeNumber(text);
        if (!taken) {
            return std::nullopt;
        }
        number = *taken;
    }
    const auto [left, top, width, height] = numbers;
    return Place{Rect::at(left, top, std::max(width, 1), std::max(height, 1)), text == kMaximized};
}

bool WindowPlace::isInReach(const platform::NativeWindow& window, const Rect& place) {
    const Rect caption = Rect::at(place.left, place.top, place.width(), kCaptionHeight);
    const auto isSeenAt = [&](int x) {
        const Rect seen =
            caption.intersected(window.workArea({x, caption.top + kCaptionHeight / 2}));
        return seen.width() >= kReach && seen.height() >= kCaptionHeight / 2;
    };
    return isSeenAt(caption.left) || isSeenAt(caption.left + caption.width() / 2) ||
           isSeenAt(caption.right - 1);
}

void WindowPlace::apply(platform::NativeWindow& window, Size least) const {
    const bool isSizable = least != Size{};
    const Rect now = window.geometry();
    std::optional<Place> place = remembered();
    if (place && !isSizable) {
        place->normal = Rect::at(place->normal.left, place->normal.top, now.width(), now.height());
    }
    const bool isUsed = place && isInReach(window, place->normal);
    if (isSizable) {
        Rect sized = isUsed ? place->normal : now;
        const Rect area = window.workArea(sized.topLeft());
        const auto limited = [](int side, int lowest, int most) {
            return std::max(std::min(side, most), lowest);
        };
        sized = Rect::at(sized.left, sized.top, limited(sized.width(), least.width, area.width()),
                         limited(sized.height(), least.height, area.height()));
        window.setGeometry(sized);
    } else if (isUsed) {
        window.setGeometry(place->normal);
    }
    if (!isUsed) {
        window.center();
    }
    if (isUsed && isSizable && place->isMaximized) {
        window.setState(platform::WindowState::maximized);
    }
}

void WindowPlace::noteOpened(const platform::NativeWindow& window) {
    if (!m_opened) {
        m_opened = placeOf(window);
    }
}

void WindowPlace::keep(const platform::NativeWindow& window) const {
    const Place now = placeOf(window);
    if (m_settings == nullptr || !m_opened || now == *m_opened) {
        return;
    }
    std::string text;
    for (const int number :
         {now.normal.left, now.normal.top, now.normal.width(), now.normal.height()}) {
        text += (text.empty() ? "" : ",") + std::to_string(number);
    }
    m_settings->set(m_key, now.isMaximized ? text + "," + std::string(kMaximized) : text);
}

} // namespace ui
