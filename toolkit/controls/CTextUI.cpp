#include "toolkit/controls/CTextUI.h"

namespace toolkit {

void* CTextUI::GetInterface(std::u16string_view name) {
    return name == u"Text" ? this : CLabelUI::GetInterface(name);
}

} // namespace toolkit
