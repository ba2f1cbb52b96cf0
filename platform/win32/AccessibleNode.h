// The COM object for one node of an accessibility tree.
#pragma once

#include <atomic>
#include <memory>

#include <windows.h>

#include <oleacc.h>

#include "platform/Accessible.h"

namespace platform::win32 {

// COM interfaces have no virtual destructor: Release destroys the objects.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Reference-counted; the last Release destroys it. UI thread only, which the system ensures.
class AccessibleNode final : public IAccessible {
public:
    /// With one reference, which is the caller's. `node` null: the root that the window has when
    /// asked.
    [[nodiscard]] static AccessibleNode* create(HWND window, Accessible* node);
    /// A number for `node` that get_accChild of the window's root understands; negative.
    [[nodiscard]] static long numberOf(Accessible& node);
    /// The node of such a number while it lives; null afterwards.
    [[nodiscard]] static Accessible* numbered(long number);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* argument) override;

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

private:
    AccessibleNode(HWND window, Accessible* node);
    ~AccessibleNode() = default;

    /// The node while it lives; null afterwards.
    [[nodiscard]] Accessible* node() const;
    /// The node that `child` means: this one, a child by its place from 1, or one by its number.
    [[nodiscard]] Accessible* target(const VARIANT& child) const;
    /// False while the window waits for its dialog.
    [[nodiscard]] bool takesInput() const;
    /// An object for `node`, this window's root included.
    [[nodiscard]] AccessibleNode* objectFor(Accessible& node) const;

    HWND m_window;
    Accessible* m_node; ///< not owned; valid while m_life is; null for the root
    std::weak_ptr<const void> m_life;
    std::atomic<ULONG> m_references{1};
};

#pragma GCC diagnostic pop

} // namespace platform::win32
