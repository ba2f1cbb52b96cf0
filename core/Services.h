// The system services used by this module and those above: the native ones, unless a test replaces
// them, on the main thread, while no other thread uses them.
#pragma once

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Process.h"

namespace core {

/// Not owned; never null.
struct Services {
    platform::FileSystem* fileSystem;
    platform::Clock* clock;
    platform::Process* process;
};

[[nodiscard]] const Services& services();

/// Replaces the services for its lifetime. The replacements must outlive it.
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
