#include "toolkit/window/CNotifyPump.h"

#include <string_view>
#include <utility>

namespace toolkit {

void CNotifyPump::NotifyPump(TNotifyUI& message) {
    using Handler = void (CNotifyPump::*)(TNotifyUI&);
    static constexpr std::pair<std::u16string_view, Handler> handlers[] = {
        {kClick, &CNotifyPump::OnClick},
        {kItemSelect, &CNotifyPump::OnItemSelect},
        {kItemActivate, &CNotifyPump::OnItemActivate},
        {kSelectChanged, &CNotifyPump::OnSelectChanged},
        {kKillFocus, &CNotifyPump::OnKillFocus},
        {kSplit, &CNotifyPump::OnSplit},
        {kTextChanged, &CNotifyPump::OnTextChanged},
    };
    for (const auto& [type, handler] : handlers) {
        if (message.sType == type) {
            (this->*handler)(message);
            return;
        }
    }
}

} // namespace toolkit
