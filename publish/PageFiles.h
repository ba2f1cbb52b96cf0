// The page's own files, built into the program from publish/page. Used by PageText.cpp.
#pragma once

#include <string_view>

namespace publish::files {

extern const std::string_view kIndex; ///< with @LANGUAGE@, @TITLE@ and @ICON@ in places of its own
extern const std::string_view kScript;
extern const std::string_view kStyle;

} // namespace publish::files
