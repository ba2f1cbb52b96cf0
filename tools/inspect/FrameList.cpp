#include "tools/inspect/FrameList.h"

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace inspect {
namespace {

template <typename Number = int>
std::optional<Number> readNumber(std::string_view text) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < 0) {
        return std::nullopt;
    }
    return value;
}

std::optional<FrameItem> readRandom(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto seed = readNumber<std::uint32_t>(text.substr(0, colon));
    const auto count = readNumber(text.substr(colon + 1));
    return seed && count ? std::optional<FrameItem>(RandomFrames{*seed, *count}) : std::nullopt;
}

} // namespace

std::optional<FrameItem> readFrameItem(const std::string& text) {
    constexpr std::string_view kRandom = "random:";
    const std::string_view item = text;
    if (item.starts_with(kRandom)) {
        return readRandom(item.substr(kRandom.size()));
    }
    const std::size_t dash = item.find('-');
    const auto first = readNumber(item.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : readNumber(item.substr(dash + 1));
    if (!first || !last || *last < *first) {
        return std::nullopt;
    }
    return FrameRange{*first, *last};
}

} // namespace inspect
