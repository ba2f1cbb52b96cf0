// The system services that this module and its users work with: the native ones, unless a test has
// put others in their place. Main thread only.
#pragma once

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Process.h"

namespace core {

/// None of the pointers owns; none is null.
struct Services {
    platform::FileSystem* fileSystem;
    platform::Clock* clock;
    platform::Process* process;
};

[[nodiscard]] const Services& services();

/// Replaces the services for its own lifetime. The replacements must outlive it.
class ServicesOverride {
public:
    explicit ServicesOverride(const Services& replacement);
    ~ServicesOverride();
    ServicesOverride(const ServicesOverride&) = delete;
    ServicesOverride& operator=(const ServicesOverride&) = delete;

private:
    Services m_previous;
};

} // namespace core
