#include "core/Services.h"

namespace core {
namespace {

/// Pointers only: still valid while other statics are being destroyed.
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
