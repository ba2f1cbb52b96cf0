// Calls the handler of each notification type.
#pragma once

#include "toolkit/window/Notification.h"

namespace toolkit {

class CNotifyPump {
public:
    virtual ~CNotifyPump() = default;
    virtual void OnClick(TNotifyUI& /*message*/) {}
    virtual void OnItemSelect(TNotifyUI& /*message*/) {}
    virtual void OnItemActivate(TNotifyUI& /*message*/) {}
    virtual void OnSelectChanged(TNotifyUI& /*message*/) {}
    virtual void OnKillFocus(TNotifyUI& /*message*/) {}
    virtual void OnSplit(TNotifyUI& /*message*/) {}
    virtual void OnTextChanged(TNotifyUI& /*message*/) {}

    /// Unknown types are ignored.
    void NotifyPump(TNotifyUI& message);
};

} // namespace toolkit
