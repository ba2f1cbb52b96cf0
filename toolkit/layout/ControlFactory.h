// The control kinds that a layout can name.
#pragma once

#include <memory>
#include <string_view>

namespace toolkit {

class CControlUI;

/// A new control of the kind that an element name ("Button", "List", ...) means; empty when the
/// toolkit has none of that name.
[[nodiscard]] std::unique_ptr<CControlUI> createControl(std::u16string_view className);

} // namespace toolkit
