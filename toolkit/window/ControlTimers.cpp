#include "toolkit/window/ControlTimers.h"

#include <algorithm>

#include "platform/WindowParts.h"

namespace toolkit {
namespace {

bool owns(const ControlTimers::Owner& owner, const CControlUI& control, unsigned id) {
    return owner.control == &control && owner.id == id;
}

} // namespace

bool ControlTimers::start(platform::WindowTimers& native, CControlUI& control, unsigned id,
                          int intervalMs) {
    const auto running = std::find_if(m_owners.begin(), m_owners.end(), [&](const auto& entry) {
        return owns(entry.second, control, id);
    });
    const unsigned nativeId = running != m_owners.end() ? running->first : m_nextId++;
    if (!native.start(nativeId, std::max(intervalMs, 1))) {
        m_owners.erase(nativeId);
        return false;
    }
    m_owners[nativeId] = {&control, id};
    return true;
}

bool ControlTimers::stop(platform::WindowTimers* native, const CControlUI& control, unsigned id) {
    const auto running = std::find_if(m_owners.begin(), m_owners.end(), [&](const auto& entry) {
        return owns(entry.second, control, id);
    });
    if (running == m_owners.end()) {
        return false;
    }
    const bool stopped = native != nullptr && native->stop(running->first);
    m_owners.erase(running);
    return stopped;
}

void ControlTimers::stopAll(platform::WindowTimers* native, const CControlUI& control) {
    std::erase_if(m_owners, [&](const auto& entry) {
        if (entry.second.control != &control) {
            return false;
        }
        if (native != nullptr) {
            native->stop(entry.first);
        }
        return true;
    });
}

ControlTimers::Owner ControlTimers::ownerOf(unsigned nativeId) const {
    const auto found = m_owners.find(nativeId);
    return found == m_owners.end() ? Owner{} : found->second;
}

} // namespace toolkit
