#include "core/Reason.h"

#include "core/Text.h"

namespace core {

std::string reason(Text text) {
    return std::string(text.source);
}

std::string trReason(const std::string& english) {
    return storedText(trLayout({}, displayText(english)));
}

} // namespace core
