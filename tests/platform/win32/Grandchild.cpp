#include "tests/support/child/Grandchild.h"

#include "platform/Process.h"

namespace child {

void startHolding(const std::string& program, const std::string& file) {
    (void)platform::nativeProcess().launch({program, "hold " + file, ""});
}

} // namespace child
