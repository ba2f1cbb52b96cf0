// The end that no program can prepare for.
#pragma once

namespace faults {

/// As from outside: no destructor, no handler, no flush.
[[noreturn]] void killThisProcess();

} // namespace faults
