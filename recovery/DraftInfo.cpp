#include "recovery/DraftInfo.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/Numbers.h"
#include "core/Services.h"
#include "platform/FileSystem.h"

namespace recovery {
namespace {

constexpr std::string_view kFirstLine = "Unsaved work, format 1\n";
constexpr std::size_t kMaxSizes = 8;
constexpr std::int64_t kYear10000 = 253'402'300'800; // no calendar need go that far

/// Printing characters as they are, so that people can read the file; a line holds any text.
std::string escaped(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '%') {
            result += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
        } else {
            result += c;
        }
    }
    return result;
}

template <typename Number>
bool readNumber(std::string_view text, Number& number) {
    const std::optional<Number> read = core::parseNumber<Number>(text);
    number = read.value_or(number);
    return read.has_value();
}

bool readText(std::string_view text, std::string& result) {
    result.clear();
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            result += text[at];
            continue;
        }
        const auto byte = core::parseNumber<unsigned>(text.substr(at + 1, 2), 16);
        if (at + 2 >= text.size() || !byte) {
            return false;
        }
        result += static_cast<char>(*byte);
        at += 2;
    }
    return true;
}

/// Takes the line "KEY VALUE" off `text`.
bool takeLine(std::string_view& text, std::string_view key, std::string_view& value) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos || !text.starts_with(key) || text.size() <= key.size() ||
        text[key.size()] != ' ') {
        return false;
    }
    value = text.substr(key.size() + 1, end - key.size() - 1);
    text.remove_prefix(end + 1);
    return true;
}

bool readSizes(std::string_view text, std::vector<std::uint64_t>& sizes) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        std::uint64_t size = 0;
        if (sizes.size() == kMaxSizes || !readNumber(text.substr(0, end), size)) {
            return false;
        }
        sizes.push_back(size);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

std::string stateOf(const std::vector<std::string>& paths, bool hasFractions) {
    std::string state;
    for (const std::string& path : paths) {
        const auto info = core::services().fileSystem->info(path);
        state += state.empty() ? "" : " ";
        state += info ? std::to_string(info->size) + "@" + std::to_string(info->modified) : "none";
        if (info && hasFractions) {
            state += "." + std::to_string(info->modifiedNanoseconds);
        }
    }
    return state;
}

} // namespace

std::string toText(const DraftInfo& info) {
    std::string sizes;
    for (const std::uint64_t size : info.sizes) {
        sizes += (sizes.empty() ? "" : " ") + std::to_string(size);
    }
    const std::pair<const char*, std::string> lines[] = {
        {"scene ", escaped(info.scene)},
        {"listed ", escaped(info.listedAs)},
        {"video ", escaped(info.video)},
        {"base ", escaped(info.base)},
        {"time ", std::to_string(info.time)},
        {"number ", std::to_string(info.number)},
        {"sizes ", sizes},
    };
    std::string text(kFirstLine);
    for (const auto& [key, value] : lines) {
        text += key + value + '\n';
    }
    return text;
}

std::optional<DraftInfo> draftInfo(std::string_view text) {
    if (!text.starts_with(kFirstLine)) {
        return std::nullopt;
    }
    text.remove_prefix(kFirstLine.size());
    DraftInfo info;
    std::string_view value;
    const bool good = takeLine(text, "scene", value) && readText(value, info.scene) &&
                      takeLine(text, "listed", value) && readText(value, info.listedAs) &&
                      takeLine(text, "video", value) && readText(value, info.video) &&
                      takeLine(text, "base", value) && readText(value, info.base) &&
                      takeLine(text, "time", value) && readNumber(value, info.time) &&
                      info.time >= 0 && info.time < kYear10000 && takeLine(text, "number", value) &&
                      readNumber(value, info.number) && takeLine(text, "sizes", value) &&
                      readSizes(value, info.sizes) && text.empty();
    return good ? std::optional(std::move(info)) : std::nullopt;
}

std::string savedState(const std::vector<std::string>& paths) {
    return stateOf(paths, true);
}

bool isSavedState(const std::vector<std::string>& paths, const std::string& state) {
    return state == stateOf(paths, state.find('.') != std::string::npos);
}

} // namespace recovery
