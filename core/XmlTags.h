// A look at an XML text before it is parsed. Any thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace core {

inline constexpr std::size_t kMaxTagAttributes = 256;

/// Whether no tag has more attributes than that. The parser and its users look for an attribute by
/// going through all of its tag, which in a file made for it would take hours.
[[nodiscard]] bool areTagsModest(std::string_view xml);

} // namespace core
