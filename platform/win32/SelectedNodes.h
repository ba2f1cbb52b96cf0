// The nodes that are selected below another one, as a list of COM objects.
#pragma once

#include <atomic>
#include <cstddef>
#include <utility>
#include <vector>

#include <windows.h>

#include <oleauto.h>

namespace platform::win32 {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Reference-counted; the last Release destroys it. UI thread only, which the system ensures.
class SelectedNodes final : public IEnumVARIANT {
public:
    /// With one reference, which is the caller's. Takes over one reference to each of the objects.
    [[nodiscard]] static SelectedNodes* create(std::vector<IDispatch*> objects);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* values, ULONG* fetched) override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
    HRESULT STDMETHODCALLTYPE Reset() override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override;

private:
    explicit SelectedNodes(std::vector<IDispatch*> objects) : m_objects(std::move(objects)) {}
    ~SelectedNodes();

    std::vector<IDispatch*> m_objects;
    std::size_t m_next = 0;
    std::atomic<ULONG> m_references{1};
};

#pragma GCC diagnostic pop

} // namespace platform::win32
