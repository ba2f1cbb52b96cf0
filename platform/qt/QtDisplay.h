// Whether there is a screen to show windows on, asked before Qt, which ends the program without
// one.
#pragma once

namespace platform::qt {

[[nodiscard]] bool isDisplayAvailable();

} // namespace platform::qt
