#include "core/Services.h"

namespace core {
namespace {

/// Plain pointers, so that they stay valid while other static objects are destroyed.
Services& current() {
    static Services services{&platform::nativeFileSystem(), &platform::nativeClock(),
                             &platform::nativeProcess()};
    return services;
}

} // namespace

const Services& services() {
    return current();
}

ServicesOverride::ServicesOverride(const Services& replacement) : m_previous(current()) {
    current() = replacement;
}

ServicesOverride::~ServicesOverride() {
    current() = m_previous;
}

} // namespace core
