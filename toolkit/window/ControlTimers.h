// The timers of a window's controls: each control numbers its own, the native window numbers them
// all.
#pragma once

#include <map>

namespace platform {
class WindowTimers;
}

namespace toolkit {

class CControlUI;

class ControlTimers {
public:
    struct Owner {
        CControlUI* control = nullptr;
        unsigned id = 0;
    };

    /// Every `intervalMs` (at least 1); a running timer is restarted. False when the system
    /// refuses.
    bool start(platform::WindowTimers& native, CControlUI& control, unsigned id, int intervalMs);
    /// False when the control has no such timer.
    bool stop(platform::WindowTimers* native, const CControlUI& control, unsigned id);
    void stopAll(platform::WindowTimers* native, const CControlUI& control);
    /// The control is null when `nativeId` belongs to none.
    [[nodiscard]] Owner ownerOf(unsigned nativeId) const;
    /// After the native window has gone with all its timers.
    void forgetAll() { m_owners.clear(); }

private:
    static constexpr unsigned kFirstNativeId = 0x1000;

    std::map<unsigned, Owner> m_owners; ///< by native id
    unsigned m_nextId = kFirstNativeId;
};

} // namespace toolkit
