// A temporary folder for one test, current while the test runs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace support {

/// Created empty in the system's folder for temporary files and removed with its contents.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// Absolute, UTF-8, ends in a separator.
    [[nodiscard]] const std::string& path() const { return m_path; }

private:
    std::string m_path;
    std::string m_previous;
};

/// The base of fixtures that read and write files by relative names.
class TempFolderTest : public ::testing::Test {
protected:
    TempFolder m_folder;
};

/// Creates missing parent folders. Bytes as given. Throws when that fails.
void writeBytes(const std::string& path, const std::string& bytes);
inline void writeBytes(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    writeBytes(path, std::string(bytes.begin(), bytes.end()));
}
/// Throws when the file cannot be read.
[[nodiscard]] std::string readBytes(const std::string& path);
[[nodiscard]] bool exists(const std::string& path);
/// Every file below `folder`, as sorted relative paths with "/".
[[nodiscard]] std::vector<std::string> filesBelow(const std::string& folder);
void makeFolder(const std::string& path);

} // namespace support
