#include "core/Translations.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

#include "core/IniLines.h"
#include "core/Paths.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "platform/FileSystem.h"

namespace core {
namespace {

constexpr const char* kFallbackLanguage = "English";
constexpr std::string_view kSectionPrefix = "language:"; // in lower case
constexpr std::size_t kMaxFileBytes = std::size_t{4} * 1024 * 1024;
constexpr int kMaxLines = 9;

std::string lookupKey(std::string_view language, std::string_view key) {
    return lowerCase(language) + "." + lowerCase(key);
}

} // namespace

std::shared_ptr<Translations> Translations::create(const std::string& path,
                                                   const std::string& language) {
    try {
        auto translations = std::make_shared<Translations>(language);
        return translations->load(path) ? translations : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

Translations::Translations(const std::string& language) : m_language(language) {}

std::shared_ptr<Translations> Translations::in(const std::string& language) const {
    auto other = std::make_shared<Translations>(*this);
    other->m_language = language;
    return other;
}

std::string Translations::spelledLanguage() const {
    const auto found =
        std::find_if(m_languages.begin(), m_languages.end(), [&](const std::string& language) {
            return lowerCase(language) == lowerCase(m_language);
        });
    return found != m_languages.end() ? *found : std::string();
}

bool Translations::load(const std::string& path) {
    if (!isFolder(path)) {
        return loadFile(path);
    }
    const std::string folder = withSeparator(path);
    std::vector<std::string> names;
    listFiles(folder + "*.ini", names);
    return std::all_of(names.begin(), names.end(),
                       [&](const std::string& name) { return loadFile(folder + name); });
}

bool Translations::loadFile(const std::string& path) {
    const std::optional<std::string> text = readWholeFile(path, kMaxFileBytes);
    if (!text) {
        writeStandardError("Translations cannot be read: \"" + path + "\", looked for as \"" +
                           services().fileSystem->fullPath(path) + "\"" +
                           (isFile(path) ? ". It may have 4 MB at most." : ""));
        return false;
    }
    readIniText(*text, path,
                [this](std::string_view section, std::string_view key, std::string_view value) {
                    if (lowerCase(section.substr(0, kSectionPrefix.size())) != kSectionPrefix) {
                        return;
                    }
                    const std::string_view language =
                        trimmed(section.substr(kSectionPrefix.size()));
                    if (language.empty()) {
                        return;
                    }
                    m_languages.emplace(language);
                    m_texts.emplace(lookupKey(language, key), value);
                });
    return true;
}

const std::string* Translations::findLine(const std::string& language,
                                          const std::string& key) const {
    const auto found = m_texts.find(lookupKey(language, key));
    return found == m_texts.end() ? nullptr : &found->second;
}

std::optional<std::string> Translations::findIn(const std::string& language,
                                                const std::string& key) const {
    const std::string* line = findLine(language, key);
    if (line == nullptr) {
        return std::nullopt;
    }
    std::string text = *line;
    for (int number = 2; number <= kMaxLines; ++number) {
        line = findLine(language, key + "." + std::to_string(number));
        if (line == nullptr) {
            break;
        }
        text += " " + *line;
    }
    return text;
}

std::optional<std::string> Translations::find(const std::string& key) const {
    std::optional<std::string> text = findIn(m_language, key);
    return !text && m_language != kFallbackLanguage ? findIn(kFallbackLanguage, key) : text;
}

std::string Translations::translate(const std::string& key) const {
    if (key.empty() || (key.front() >= '0' && key.front() <= '9')) {
        return key;
    }
    return find(key).value_or(key);
}

} // namespace core
