// Asks for accessible objects through MSAA, as a screen reader does, and compares what it hears
// with the tree that a window keeps.
#pragma once

#include <memory>
#include <string>

#include <windows.h>

#include <oleacc.h>

#include "platform/Accessible.h"

namespace test {

struct ReleaseObject {
    void operator()(IUnknown* object) const { object->Release(); }
};
using AccessibleObject = std::unique_ptr<IAccessible, ReleaseObject>;

/// The object of a window's client area; empty when Windows has none.
[[nodiscard]] AccessibleObject clientOf(HWND window);
[[nodiscard]] VARIANT numbered(long id);
/// The text, which is freed; empty for null.
[[nodiscard]] std::u16string taken(BSTR text);

class TreeReader {
public:
    explicit TreeReader(HWND window) : m_window(window) {}

    /// Compares `object` with `node`, and all below with what is below.
    void readTree(IAccessible& object, const platform::Accessible& node) const;
    /// Compares the child `id` of `object` (or itself) with `node`.
    void read(IAccessible& object, const VARIANT& id, const platform::Accessible& node) const;

private:
    void readPlaceAndState(IAccessible& object, const VARIANT& id,
                           const platform::Accessible& node) const;

    HWND m_window;
};

} // namespace test
