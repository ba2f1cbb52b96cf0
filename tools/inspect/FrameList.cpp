#include "tools/inspect/FrameList.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/Numbers.h"

namespace inspect {
namespace {

/// 0 or more.
std::optional<int> readNumber(std::string_view text) {
    const std::optional<int> number = core::parseNumber<int>(text);
    return number && *number >= 0 ? number : std::nullopt;
}

std::optional<FrameItem> readRandom(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto seed = core::parseNumber<std::uint32_t>(text.substr(0, colon));
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
