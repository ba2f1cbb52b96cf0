#include "core/Settings.h"

#include <cstddef>
#include <optional>
#include <utility>

#include <INIReader.h>

#include "core/WholeFile.h"

namespace core {
namespace {

constexpr std::size_t kMaxBytes = std::size_t{1024} * 1024;

} // namespace

std::shared_ptr<Settings> Settings::create(const std::string& path) {
    // From memory: the library does not open files by UTF-8 names on every system.
    const std::optional<std::string> text = readWholeFile(path, kMaxBytes);
    if (!text) {
        return nullptr;
    }
    auto reader = std::make_unique<INIReader>(text->data(), text->size());
    return reader->ParseError() == 0 ? std::make_shared<Settings>(std::move(reader)) : nullptr;
}

Settings::Settings(std::unique_ptr<INIReader> reader) : m_reader(std::move(reader)) {}

Settings::~Settings() = default;

std::string Settings::getString(const std::string& section, const std::string& key,
                                const std::string& defaultValue) const {
    return m_reader->Get(section, key, defaultValue);
}

} // namespace core
