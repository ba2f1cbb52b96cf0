#include "toolkit/controls/CListHeader.h"

namespace toolkit {

void* CListHeader::GetInterface(std::u16string_view name) {
    return name == u"ListHeader" ? this : CContainerUI::GetInterface(name);
}

} // namespace toolkit
