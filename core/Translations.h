// The texts of the user interface in the chosen language, read from INI files whose sections are
// named "Language:" followed by a language's name. UI thread only.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

namespace core {

class Translations {
public:
    /// `path`: a file, or a folder whose "*.ini" files are all read. Empty (and a line on stderr)
    /// when a file cannot be opened; a bad line is passed over. The first of two texts with the
    /// same key stands.
    [[nodiscard]] static std::shared_ptr<Translations> create(const std::string& path,
                                                              const std::string& language);
    explicit Translations(const std::string& language);

    /// The text of `key` in the current language, else in English, else `key` itself. An empty key,
    /// or one that begins with a digit, comes back unchanged. Case does not matter in a key.
    [[nodiscard]] std::string translate(const std::string& key) const;

    [[nodiscard]] const std::string& language() const { return m_language; }
    /// The languages that the files hold a text for, as written there.
    [[nodiscard]] const std::set<std::string>& languages() const { return m_languages; }

private:
    [[nodiscard]] bool load(const std::string& path);
    [[nodiscard]] bool loadFile(const std::string& path);
    [[nodiscard]] const std::string* find(const std::string& language,
                                          const std::string& key) const;

    std::string m_language;
    std::set<std::string> m_languages;
    std::map<std::string, std::string> m_texts; ///< key: "language.key" in lower case
};

} // namespace core
