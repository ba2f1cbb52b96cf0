#include "app/services/Launcher.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/File.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/Text.h"
#include "platform/FileSystem.h"
#include "platform/Process.h"

namespace app {
namespace {

constexpr std::array<const char*, 3> kSettingsFiles{
    "../../../Settings/Launcher.ini", "../../Settings/Launcher.ini", "../Settings/Launcher.ini"};
constexpr const char* kMenuProgram = "../../Vemora.exe";
constexpr const char* kOtherMenuProgram = "../../Brimwick/Vemora.exe";
constexpr std::int64_t kMaxPathBytes = 64 * 1024; // twice the longest path of any system
/// In UTF-16 units. The limit of one system is applied on all, so that the product behaves the
/// same.
constexpr std::size_t kMaxFullPath = 259;

/// The text of the first settings file that exists, up to a zero byte and without trailing blanks;
/// empty if there is none or it cannot be read. The other files are not considered.
std::string configuredProgram() {
    const auto* const path = std::find_if(kSettingsFiles.begin(), kSettingsFiles.end(),
                                          [](const char* file) { return core::isFile(file); });
    core::File file;
    if (path == kSettingsFiles.end() || !file.open(*path, "rt")) {
        return {};
    }
    const std::int64_t size = file.size();
    if (size < 1) {
        return {};
    }
    std::string text(static_cast<std::size_t>(std::min(size, kMaxPathBytes)), '\0');
    if (!file.read(text.data(), text.size())) {
        return {};
    }
    const std::size_t end = text.find('\0');
    if (end == std::string::npos && size > kMaxPathBytes) {
        return {};
    }
    text.resize(std::min(end, text.size()));
    text.resize(text.find_last_not_of("\r\n \t") + 1);
    return text;
}

} // namespace

bool launch(const std::string& program, const std::string& arguments,
            const std::string& workingFolder) {
    if (program.empty()) {
        return false;
    }
    const std::string fullPath = core::services().fileSystem->fullPath(program);
    if (fullPath.empty() || core::displayText(fullPath).size() > kMaxFullPath) {
        return false;
    }
    const std::string folder = workingFolder.empty() ? core::folderOf(fullPath) : workingFolder;
    return core::services().process->launch({fullPath, arguments, folder});
}

void handOffToLauncher() {
    if (launch(configuredProgram(), "", "")) {
        return;
    }
    // The other place is tried only if this file does not exist, not if it fails to start.
    // Intended.
    if (core::isFile(kMenuProgram)) {
        (void)launch(kMenuProgram, "", "");
    } else if (core::isFile(kOtherMenuProgram)) {
        (void)launch(kOtherMenuProgram, "", "");
    }
}

} // namespace app
