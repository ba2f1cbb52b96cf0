#include "toolkit/layout/ControlFactory.h"

#include <unordered_map>

#include "toolkit/controls/CButtonUI.h"
#include "toolkit/controls/CComboUI.h"
#include "toolkit/controls/CContainerUI.h"
#include "toolkit/controls/CControlUI.h"
#include "toolkit/controls/CEditUI.h"
#include "toolkit/controls/CLabelUI.h"
#include "toolkit/controls/CListContainerElementUI.h"
#include "toolkit/controls/CListHeader.h"
#include "toolkit/controls/CListLabelElementUI.h"
#include "toolkit/controls/CListUI.h"
#include "toolkit/controls/COptionUI.h"
#include "toolkit/controls/CPictureUI.h"
#include "toolkit/controls/CProgressUI.h"
#include "toolkit/controls/CScrollBarUI.h"
#include "toolkit/controls/CSplitterUI.h"
#include "toolkit/controls/CTextUI.h"
#include "toolkit/layout/CHorizontalLayoutUI.h"
#include "toolkit/layout/CVerticalLayoutUI.h"

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
        {u"Picture", make<CPictureUI>},
        {u"Combo", make<CComboUI>},
        {u"Edit", make<CEditUI>},
        {u"List", make<CListUI>},
        {u"ListHeader", make<CListHeader>},
        {u"ListLabelElement", make<CListLabelElementUI>},
        {u"ListContainerElement", make<CListContainerElementUI>},
        {u"ScrollBar", make<CScrollBarUI>},
        {u"Progress", make<CProgressUI>},
        {u"Splitter", make<CSplitterUI>},
    };
    const auto maker = makers.find(className);
    return maker == makers.end() ? nullptr : maker->second();
}

} // namespace toolkit
