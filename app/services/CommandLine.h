// The tokens of the command line. Main thread only.
#pragma once

#include <cstdint>
#include <string>

namespace app {

/// Bits of the command-line flags.
constexpr std::uint32_t kTestModeFlag = 0x1;         // recorded, changes nothing
constexpr std::uint32_t kLauncherFlag = 0x2;         // start the menu program again at the end
constexpr std::uint32_t kSecondaryMonitorFlag = 0x8; // recorded, changes nothing

/// The flags of the case-sensitive tokens "Launcher", "SecondaryMonitor" and "TestMode", separated
/// by blanks. Any other token is ignored.
[[nodiscard]] std::uint32_t parseCommandLine(const std::string& commandLine);

/// What the program prints instead of opening its windows if one of the tokens is "--help" or
/// "--version"; else empty. Ignored next to one of the three tokens above, which mean that the
/// launcher started the program.
[[nodiscard]] std::string requestedText(const std::string& commandLine);

} // namespace app
