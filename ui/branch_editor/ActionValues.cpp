#include "ui/branch_editor/ActionValues.h"

#include <algorithm>
#include <cstddef>

#include "core/Text.h"

namespace ui {

ParameterKind parameterKind(int condition) {
    switch (condition) {
    case kConditionDefault:
    case kConditionRandom:
        return ParameterKind::none;
    case kConditionKeypress:
        return ParameterKind::letters;
    case kConditionZone:
        return ParameterKind::zones;
    default:
        return ParameterKind::unknown;
    }
}

const std::vector<std::string>& keyLetters() {
    static const std::vector<std::string> letters = [] {
        std::vector<std::string> all;
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
            all.emplace_back(1, letter);
        }
        return all;
    }();
    return letters;
}

int actionNumber(const std::u16string& userData) {
    return userData.empty() ? -1 : core::convertStringToInt(userData);
}

int indexOfText(const std::vector<std::string>& items, std::string_view text) {
    const auto found = std::find(items.begin(), items.end(), text);
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

std::string storedChoice(const std::vector<std::string>& items, int index,
                         const std::u16string& shown) {
    if (index >= 0 && static_cast<std::size_t>(index) < items.size()) {
        const std::string& stored = items[static_cast<std::size_t>(index)];
        if (core::displayText(stored) == shown) {
            return stored;
        }
    }
    return core::storedText(shown);
}

} // namespace ui
