// Any bytes as what the editor keeps for itself between two runs, its settings and the list of
// opened scenes. After the first zero byte come values that are set: each is read again, and no
// other key loses its value.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "core/EditorSettings.h"
#include "recovery/Places.h"
#include "recovery/RecentScenes.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;
using Values = std::vector<std::pair<std::string, std::string>>;

constexpr const char* kKeys[] = {"scale", "keepDrafts", "place", "Keys"};

/// The values that begin at `at`, each ended by a zero byte.
std::vector<std::string> valuesFrom(const std::string& text, std::size_t at) {
    std::vector<std::string> values;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find('\0', at), text.size());
        values.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return values;
}

void change(const std::string& path, const std::vector<std::string>& values) {
    core::EditorSettings settings(path);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::string key = kKeys[i % std::size(kKeys)];
        const Values section = settings.section(key);
        if (settings.set(key, values[i])) {
            const core::EditorSettings again(path);
            require(again.getString(key, "-") == settings.getString(key, "+"));
            require(again.section(key) == section);
            require(again.getInt(key, 7, 7, 9) >= 7);
        }
        const std::string place = settings.getString("place", "");
        if (settings.setIn(key, "in", values[i])) {
            const Values now = core::EditorSettings(path).section(key);
            require(std::count_if(now.begin(), now.end(),
                                  [](const auto& value) { return value.first == "in"; }) == 1);
            require(settings.getString("place", "") == place);
            require(settings.setIn(key, "in", {}));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    const std::string input(data, data + size);
    const std::size_t end = std::min(input.find('\0'), input.size());
    services.files.files["/home/Editor.ini"] = input.substr(0, end);
    services.files.files["/home/Recent.txt"] = input.substr(0, end);
    const std::vector<std::string> values = valuesFrom(input, end + 1);
    change(recovery::editorIniPath(), values);
    for (const std::string& name : values) {
        const auto before = recovery::openedScenes();
        recovery::noteOpenedScene(name);
        const auto now = recovery::openedScenes();
        require(now.size() >= before.size() || now.size() == 500);
    }
    return 0;
}
