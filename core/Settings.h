// One INI file of settings. Section and key names are case-insensitive; keys before the first
// section header belong to the section with the empty name. UI thread only. Format:
// https://github.com/benhoyt/inih
#pragma once

#include <memory>
#include <string>

class INIReader;

namespace core {

class Settings {
public:
    /// Empty if the file is missing, larger than 1 MB, or contains a line that is not valid INI.
    [[nodiscard]] static std::shared_ptr<Settings> create(const std::string& path);
    explicit Settings(std::unique_ptr<INIReader> reader);
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// `defaultValue` if the key is absent; a key without text gives an empty text.
    [[nodiscard]] std::string getString(const std::string& section, const std::string& key,
                                        const std::string& defaultValue) const;

private:
    std::unique_ptr<INIReader> m_reader;
};

} // namespace core
