// One INI file of settings. Names of sections and keys are read without regard to case; a key
// before the first section header is in the section with the empty name. UI thread only.
// Format: https://github.com/benhoyt/inih
#pragma once

#include <memory>
#include <string>

class INIReader;

namespace core {

class Settings {
public:
    /// Empty when the file is missing, larger than 1 MB, or has a line that is no INI.
    [[nodiscard]] static std::shared_ptr<Settings> create(const std::string& path);
    explicit Settings(std::unique_ptr<INIReader> reader);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// `defaultValue` when the key is absent; a key without text gives an empty text.
    [[nodiscard]] std::string getString(const std::string& section, const std::string& key,
                                        const std::string& defaultValue) const;

private:
    std::unique_ptr<INIReader> m_reader;
};

} // namespace core
