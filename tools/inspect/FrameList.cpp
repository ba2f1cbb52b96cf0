#include "tools/inspect/FrameList.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <random>
#include <string_view>

namespace inspect {
namespace {

constexpr int kMostFrames = 100'000'000; // of one item; more would only fill the memory

template <typename Number = int>
std::optional<Number> readNumber(std::string_view text) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < 0) {
        return std::nullopt;
    }
    return value;
}

bool addRandom(std::string_view text, int frameCount, std::vector<int>& frames) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return false;
    }
    const auto seed = readNumber<std::uint32_t>(text.substr(0, colon));
    const auto count = readNumber(text.substr(colon + 1));
    if (!seed || !count || *count > kMostFrames) {
        return false;
    }
    std::mt19937 random(*seed);
    for (int i = 0; i < *count && frameCount > 0; ++i) {
        frames.push_back(static_cast<int>(random() % static_cast<std::uint32_t>(frameCount)));
    }
    return true;
}

} // namespace

bool addFrames(const std::string& item, int frameCount, std::vector<int>& frames) {
    constexpr std::string_view kRandom = "random:";
    if (item.starts_with(kRandom)) {
        return addRandom(std::string_view(item).substr(kRandom.size()), frameCount, frames);
    }
    const std::size_t dash = item.find('-');
    const auto first = readNumber(std::string_view(item).substr(0, dash));
    const auto last =
        dash == std::string::npos ? first : readNumber(std::string_view(item).substr(dash + 1));
    if (!first || !last || *last < *first || *last - *first >= kMostFrames) {
        return false;
    }
    for (int frame = *first; frame <= *last; ++frame) {
        frames.push_back(frame);
    }
    return true;
}

} // namespace inspect
