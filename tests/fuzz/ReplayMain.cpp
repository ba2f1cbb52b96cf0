// Runs a fuzz target over kept inputs when it is not linked to libFuzzer: the files named on the
// command line, and all files in the folders named there. A folder may be missing: a target may
// keep no input yet. Exit 1 when a file cannot be read; a finding ends the program.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> inputsBelow(platform::FileSystem& files, const std::string& path) {
    std::vector<std::string> inputs;
    std::vector<platform::FolderEntry> entries;
    const auto info = files.info(path);
    if (info && !info->isFolder) {
        inputs.push_back(path);
    } else if (info && files.list(path, entries)) {
        for (const platform::FolderEntry& entry : entries) {
            if (!entry.isFolder) {
                inputs.push_back(path + "/" + entry.name);
            }
        }
    }
    return inputs;
}

bool replay(platform::FileSystem& files, const std::string& path) {
    int error = 0;
    const auto stream = files.open(path, platform::OpenMode::read, error);
    if (!stream || stream->size() < 0) {
        std::fprintf(stderr, "%s: %s\n", path.c_str(), files.errorText(error).c_str());
        return false;
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(stream->size()));
    if (stream->read(bytes.data(), bytes.size()) != bytes.size()) {
        return false;
    }
    std::fprintf(stderr, "%s\n", path.c_str()); // the last line names the input that crashed
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    platform::FileSystem& files = platform::nativeFileSystem();
    const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(&nothing, 0);
    bool good = true;
    for (int index = 1; index < argc; ++index) {
        for (const std::string& input : inputsBelow(files, argv[index])) {
            good = replay(files, input) && good;
        }
    }
    return good ? 0 : 1;
}
