#include <filesystem>
#include <string>
#include <system_error>

#include "platform/ProgramFolder.h"

namespace platform {

std::string programFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : program.parent_path().string();
}

} // namespace platform
