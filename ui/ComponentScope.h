// One use of the system's components (COM) by a window object: initialised when the window is made,
// given back when it goes. UI thread only.
#pragma once

#include <cstdint>

#include "platform/Gui.h"

namespace ui {

class ComponentScope {
public:
    explicit ComponentScope(platform::ComponentLibrary& components) : m_components(components) {
        std::uint32_t error = 0;
        m_initialized = components.initialize(error);
    }
    ~ComponentScope() {
        if (m_initialized) {
            m_components.uninitialize();
        }
    }
    ComponentScope(const ComponentScope&) = delete;
    ComponentScope& operator=(const ComponentScope&) = delete;

    [[nodiscard]] bool initialized() const { return m_initialized; }

private:
    platform::ComponentLibrary& m_components;
    bool m_initialized = false;
};

} // namespace ui
