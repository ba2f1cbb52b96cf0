#include "recovery/RecentScenes.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "core/Services.h"
#include "core/WholeFile.h"
#include "platform/Clock.h"
#include "recovery/Places.h"

namespace recovery {
namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{1} << 20U;
constexpr std::size_t kMaxScenes = 500;

bool isPlain(char c) {
    return static_cast<unsigned char>(c) >= ' ';
}

} // namespace

std::map<std::string, std::int64_t> openedScenes() {
    std::map<std::string, std::int64_t> opened;
    const std::string text = core::readWholeFile(recentScenesPath(), kMaxFileBytes).value_or("");
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        std::int64_t time = 0;
        const auto [end, failure] = std::from_chars(line.data(), line.data() + line.size(), time);
        const auto length = static_cast<std::size_t>(end - line.data());
        if (failure == std::errc() && length + 1 < line.size() && line[length] == ' ' &&
            opened.size() < kMaxScenes) {
            opened.emplace(line.substr(length + 1), time);
        }
    }
    return opened;
}

void noteOpenedScene(const std::string& name) {
    if (name.empty() || !std::all_of(name.begin(), name.end(), isPlain)) {
        return; // no line can hold it
    }
    auto opened = openedScenes();
    opened[name] = core::services().clock->now();
    std::vector<std::pair<std::int64_t, std::string>> newest;
    for (const auto& [scene, time] : opened) {
        newest.emplace_back(time, scene);
    }
    std::sort(newest.rbegin(), newest.rend());
    newest.resize(std::min(newest.size(), kMaxScenes));
    std::string text;
    for (const auto& [time, scene] : newest) {
        text += std::to_string(time) + " " + scene + "\n";
    }
    core::replaceWholeFile(*core::services().fileSystem, recentScenesPath(), text);
}

} // namespace recovery
