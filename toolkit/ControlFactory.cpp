#include "toolkit/ControlFactory.h"

#include <unordered_map>

#include "toolkit/CButtonUI.h"
#include "toolkit/CComboUI.h"
#include "toolkit/CContainerUI.h"
#include "toolkit/CEditUI.h"
#include "toolkit/CHorizontalLayoutUI.h"
#include "toolkit/CLabelUI.h"
#include "toolkit/CListContainerElementUI.h"
#include "toolkit/CListHeader.h"
#include "toolkit/CListLabelElementUI.h"
#include "toolkit/CListUI.h"
#include "toolkit/COptionUI.h"
#include "toolkit/CScrollBarUI.h"
#include "toolkit/CTextUI.h"
#include "toolkit/CVerticalLayoutUI.h"

namespace toolkit {
namespace {

template <class T>
std::unique_ptr<CControlUI> make() {
    return std::make_unique<T>();
}

} // namespace

std::unique_ptr<CControlUI> createControl(std::u16string_view className) {
    using Maker = std::unique_ptr<CControlUI> (*)();
    static const std::unordered_map<std::u16string_view, Maker> makers{
        {u"Control", make<CControlUI>},
        {u"Container", make<CContainerUI>},
        {u"HorizontalLayout", make<CHorizontalLayoutUI>},
        {u"VerticalLayout", make<CVerticalLayoutUI>},
        {u"Label", make<CLabelUI>},
        {u"Text", make<CTextUI>},
        {u"Button", make<CButtonUI>},
        {u"Option", make<COptionUI>},
        {u"Combo", make<CComboUI>},
        {u"Edit", make<CEditUI>},
        {u"List", make<CListUI>},
        {u"ListHeader", make<CListHeader>},
        {u"ListLabelElement", make<CListLabelElementUI>},
        {u"ListContainerElement", make<CListContainerElementUI>},
        {u"ScrollBar", make<CScrollBarUI>},
    };
    const auto maker = makers.find(className);
    return maker == makers.end() ? nullptr : maker->second();
}

} // namespace toolkit
