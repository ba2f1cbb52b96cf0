#include "platform/win32/AccessibleNode.h"

#include <map>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/raster/PixelScale.h"
#include "platform/win32/MsaaTerms.h"
#include "platform/win32/SelectedNodes.h"
#include "platform/win32/WideText.h"
#include "platform/win32/Win32Window.h"

namespace platform::win32 {

namespace {

struct Numbered {
    Accessible* node;
    std::weak_ptr<const void> life;
};

/// Nodes that listeners were told about. UI thread only.
std::map<long, Numbered>& numberedNodes() {
    static std::map<long, Numbered> nodes;
    return nodes;
}

/// S_FALSE and null for an empty text, as the interface wants it.
HRESULT give(const std::u16string& text, BSTR* result) {
    *result = nullptr;
    if (text.empty()) {
        return S_FALSE;
    }
    *result = SysAllocStringLen(toWide(text).c_str(), static_cast<UINT>(text.size()));
    return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT give(long value, VARIANT* result) {
    VariantInit(result);
    result->vt = VT_I4;
    result->lVal = value;
    return S_OK;
}

HRESULT give(IDispatch* object, VARIANT* result) {
    VariantInit(result);
    result->vt = VT_DISPATCH;
    result->pdispVal = object;
    return S_OK;
}

Rect onScreen(HWND window, const Accessible& node) {
    POINT origin{};
    ClientToScreen(window, &origin);
    const Win32Window* ours = Win32Window::fromHandle(window);
    const raster::PixelScale scale(ours != nullptr ? ours->scale() : 1, {}, {});
    return scale.rect(node.accessibleRect()).translated(origin.x, origin.y);
}

} // namespace

AccessibleNode::AccessibleNode(HWND window, Accessible* node) : m_window(window), m_node(node) {
    if (node != nullptr) {
        m_life = node->accessibleLife();
    }
}

AccessibleNode* AccessibleNode::create(HWND window, Accessible* node) {
    return new AccessibleNode(window, node); // ends itself: Release
}

long AccessibleNode::numberOf(Accessible& node) {
    auto& nodes = numberedNodes();
    std::erase_if(nodes, [](const auto& entry) { return entry.second.life.expired(); });
    for (const auto& [number, entry] : nodes) {
        if (entry.node == &node) {
            return number;
        }
    }
    static long last = 0;
    nodes[--last] = {&node, node.accessibleLife()};
    return last;
}

Accessible* AccessibleNode::numbered(long number) {
    const auto found = numberedNodes().find(number);
    return found == numberedNodes().end() || found->second.life.expired() ? nullptr
                                                                          : found->second.node;
}

Accessible* AccessibleNode::node() const {
    Win32Window* window = Win32Window::fromHandle(m_window);
    if (window == nullptr) {
        return nullptr;
    }
    return m_node == nullptr ? window->accessibleRoot() : m_life.expired() ? nullptr : m_node;
}

Accessible* AccessibleNode::target(const VARIANT& child) const {
    Accessible* self = node();
    if (self == nullptr || child.vt != VT_I4) {
        return nullptr;
    }
    if (child.lVal == CHILDID_SELF) {
        return self;
    }
    if (child.lVal < 0) {
        return numbered(child.lVal);
    }
    return child.lVal <= self->accessibleChildCount() ? self->accessibleChild(child.lVal - 1)
                                                      : nullptr;
}

AccessibleNode* AccessibleNode::objectFor(Accessible& node) const {
    const Win32Window* window = Win32Window::fromHandle(m_window);
    const bool root = window != nullptr && window->accessibleRoot() == &node;
    return create(m_window, root ? nullptr : &node);
}

HRESULT AccessibleNode::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    const bool known = IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(IDispatch)) ||
                       IsEqualIID(id, __uuidof(IAccessible));
    *object = known ? static_cast<IAccessible*>(this) : nullptr;
    if (!known) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG AccessibleNode::AddRef() {
    return ++m_references;
}

ULONG AccessibleNode::Release() {
    const ULONG left = --m_references;
    if (left == 0) {
        delete this;
    }
    return left;
}

// Everybody asks through IAccessible itself.
HRESULT AccessibleNode::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}
HRESULT AccessibleNode::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return E_NOTIMPL;
}
HRESULT AccessibleNode::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return E_NOTIMPL;
}
HRESULT AccessibleNode::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                               UINT*) {
    return E_NOTIMPL;
}

HRESULT AccessibleNode::get_accParent(IDispatch** parent) {
    *parent = nullptr;
    const Accessible* self = node();
    if (self == nullptr) {
        return CO_E_OBJNOTCONNECTED;
    }
    Accessible* above = self->accessibleParent();
    if (above == nullptr) {
        return AccessibleObjectFromWindow(m_window, static_cast<DWORD>(OBJID_WINDOW),
                                          __uuidof(IAccessible), reinterpret_cast<void**>(parent));
    }
    *parent = objectFor(*above);
    return S_OK;
}

HRESULT AccessibleNode::get_accChildCount(long* count) {
    const Accessible* self = node();
    *count = self != nullptr ? self->accessibleChildCount() : 0;
    return self != nullptr ? S_OK : CO_E_OBJNOTCONNECTED;
}

HRESULT AccessibleNode::get_accChild(VARIANT child, IDispatch** object) {
    *object = nullptr;
    Accessible* meant = target(child);
    if (meant == nullptr) {
        return E_INVALIDARG;
    }
    *object = objectFor(*meant);
    return S_OK;
}

HRESULT AccessibleNode::get_accName(VARIANT child, BSTR* name) {
    const Accessible* meant = target(child);
    return meant != nullptr ? give(meant->accessibleName(), name) : E_INVALIDARG;
}

HRESULT AccessibleNode::get_accValue(VARIANT child, BSTR* value) {
    const Accessible* meant = target(child);
    return meant != nullptr ? give(meant->accessibleValue(), value) : E_INVALIDARG;
}

HRESULT AccessibleNode::get_accDescription(VARIANT child, BSTR* description) {
    const Accessible* meant = target(child);
    return meant != nullptr ? give(meant->accessibleId(), description) : E_INVALIDARG;
}

HRESULT AccessibleNode::get_accRole(VARIANT child, VARIANT* role) {
    const Accessible* meant = target(child);
    return meant != nullptr ? give(msaaRole(meant->accessibleRole()), role) : E_INVALIDARG;
}

HRESULT AccessibleNode::get_accState(VARIANT child, VARIANT* state) {
    const Accessible* meant = target(child);
    return meant != nullptr ? give(msaaState(meant->accessibleState()), state) : E_INVALIDARG;
}

HRESULT AccessibleNode::get_accHelp(VARIANT, BSTR* help) {
    return give(std::u16string(), help);
}
HRESULT AccessibleNode::get_accHelpTopic(BSTR*, VARIANT, long*) {
    return DISP_E_MEMBERNOTFOUND;
}
HRESULT AccessibleNode::get_accKeyboardShortcut(VARIANT, BSTR* shortcut) {
    return give(std::u16string(), shortcut);
}

HRESULT AccessibleNode::get_accFocus(VARIANT* child) {
    Accessible* self = node();
    Accessible* focused = self != nullptr ? self->accessibleFocused() : nullptr;
    VariantInit(child);
    if (focused == nullptr) {
        return S_FALSE;
    }
    return focused == self ? give(long{CHILDID_SELF}, child) : give(objectFor(*focused), child);
}

HRESULT AccessibleNode::get_accSelection(VARIANT* children) {
    VariantInit(children);
    const Accessible* self = node();
    if (self == nullptr) {
        return S_FALSE;
    }
    const std::vector<Accessible*> selected = self->accessibleSelection();
    if (selected.size() < 2) {
        return selected.empty() ? S_FALSE : give(objectFor(*selected.front()), children);
    }
    std::vector<IDispatch*> objects;
    for (Accessible* child : selected) {
        objects.push_back(objectFor(*child));
    }
    children->vt = VT_UNKNOWN;
    children->punkVal = SelectedNodes::create(objects);
    return S_OK;
}

HRESULT AccessibleNode::get_accDefaultAction(VARIANT child, BSTR* action) {
    const Accessible* meant = target(child);
    if (meant == nullptr) {
        return E_INVALIDARG;
    }
    return give(msaaAction(*meant), action);
}

HRESULT AccessibleNode::accLocation(long* left, long* top, long* width, long* height,
                                    VARIANT child) {
    const Accessible* meant = target(child);
    if (meant == nullptr) {
        return E_INVALIDARG;
    }
    const Rect place = onScreen(m_window, *meant);
    *left = place.left;
    *top = place.top;
    *width = place.width();
    *height = place.height();
    return S_OK;
}

HRESULT AccessibleNode::accNavigate(long, VARIANT, VARIANT* end) {
    VariantInit(end);
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT AccessibleNode::accHitTest(long left, long top, VARIANT* child) {
    VariantInit(child);
    const Accessible* self = node();
    const Point at{left, top};
    if (self == nullptr || !onScreen(m_window, *self).contains(at)) {
        return S_FALSE;
    }
    POINT inWindow{left, top};
    ScreenToClient(m_window, &inWindow);
    const Win32Window* window = Win32Window::fromHandle(m_window);
    Accessible* below =
        window != nullptr ? self->accessibleChildAt(window->toLayout(inWindow)) : nullptr;
    return below != nullptr ? give(objectFor(*below), child) : give(long{CHILDID_SELF}, child);
}

} // namespace platform::win32
