#include "platform/win32/SelectedNodes.h"

#include <algorithm>
#include <utility>

namespace platform::win32 {

SelectedNodes* SelectedNodes::create(std::vector<IDispatch*> objects) {
    return new SelectedNodes(std::move(objects)); // ends itself: Release
}

SelectedNodes::~SelectedNodes() {
    for (IDispatch* object : m_objects) {
        object->Release();
    }
}

HRESULT SelectedNodes::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    const bool known = IsEqualIID(id, __uuidof(IUnknown)) || IsEqualIID(id, __uuidof(IEnumVARIANT));
    *object = known ? static_cast<IEnumVARIANT*>(this) : nullptr;
    if (!known) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG SelectedNodes::AddRef() {
    return ++m_references;
}

ULONG SelectedNodes::Release() {
    const ULONG left = --m_references;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT SelectedNodes::Next(ULONG wanted, VARIANT* values, ULONG* fetched) {
    ULONG given = 0;
    for (; given < wanted && m_next < m_objects.size(); ++given, ++m_next) {
        VariantInit(&values[given]);
        values[given].vt = VT_DISPATCH;
        values[given].pdispVal = m_objects[m_next];
        m_objects[m_next]->AddRef();
    }
    if (fetched != nullptr) {
        *fetched = given;
    }
    return given == wanted ? S_OK : S_FALSE;
}

HRESULT SelectedNodes::Skip(ULONG count) {
    const std::size_t left = m_objects.size() - m_next;
    m_next += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
}

HRESULT SelectedNodes::Reset() {
    m_next = 0;
    return S_OK;
}

HRESULT SelectedNodes::Clone(IEnumVARIANT** copy) {
    for (IDispatch* object : m_objects) {
        object->AddRef();
    }
    SelectedNodes* made = create(m_objects);
    made->m_next = m_next;
    *copy = made;
    return S_OK;
}

} // namespace platform::win32
