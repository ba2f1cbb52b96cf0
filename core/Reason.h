// Why something failed, for the log in English and for windows in the chosen language. Any thread.
#pragma once

#include <string>

#include "core/Texts.h"

namespace core {

/// The text without its key, for the log and for trReason.
[[nodiscard]] std::string reason(Text text);
/// What reason() has made, in the chosen language. What is in no catalogue, as the system's own
/// words, stays.
[[nodiscard]] std::string trReason(const std::string& english);

} // namespace core
