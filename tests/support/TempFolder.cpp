#include "tests/support/TempFolder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>

#include "platform/FileSystem.h"

namespace fs = std::filesystem;

namespace support {
namespace {

fs::path toPath(const std::string& text) {
    return fs::path(std::u8string(text.begin(), text.end()));
}

std::string toText(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

} // namespace

TempFolder::TempFolder() : m_previous(platform::nativeFileSystem().currentFolder()) {
    std::random_device random;
    fs::path folder;
    do {
        folder = fs::temp_directory_path() / ("quorvel-test-" + std::to_string(random()));
    } while (!fs::create_directories(folder));
    // As the system writes it: what it answers about the current folder is compared with this.
    const std::u8string native = fs::canonical(folder).u8string();
    m_path = std::string(native.begin(), native.end()) +
             static_cast<char>(fs::path::preferred_separator);
    if (!platform::nativeFileSystem().setCurrentFolder(m_path)) {
        throw std::runtime_error("cannot enter " + m_path);
    }
}

TempFolder::~TempFolder() {
    platform::nativeFileSystem().setCurrentFolder(m_previous);
    std::error_code ignored;
    fs::remove_all(toPath(m_path), ignored);
}

void writeBytes(const std::string& path, const std::string& bytes) {
    const fs::path target = toPath(path);
    if (target.has_parent_path()) {
        fs::create_directories(target.parent_path());
    }
    std::ofstream stream(target, std::ios::binary);
    if (!stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::string readBytes(const std::string& path) {
    // Not a standard stream: while one is open, Windows lets no other thread remove the file.
    int error = 0;
    const auto stream = platform::nativeFileSystem().open(path, platform::OpenMode::read, error);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    std::string bytes;
    std::array<char, 65536> block{};
    while (const std::size_t count = stream->read(block.data(), block.size())) {
        bytes.append(block.data(), count);
    }
    return bytes;
}

bool exists(const std::string& path) {
    return fs::exists(toPath(path));
}

std::vector<std::string> filesBelow(const std::string& folder) {
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(toPath(folder))) {
        if (!fs::is_directory(entry.symlink_status())) {
            files.push_back(toText(entry.path().lexically_relative(toPath(folder))));
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

void makeFolder(const std::string& path) {
    fs::create_directories(toPath(path));
}

} // namespace support
