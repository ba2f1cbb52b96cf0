#include "tests/support/child/Grandchild.h"

#include <unistd.h>

namespace child {

void startHolding(const std::string& program, const std::string& file) {
    if (::fork() == 0) {
        ::execl(program.c_str(), program.c_str(), "hold", file.c_str(), nullptr);
        ::_exit(1);
    }
}

} // namespace child
