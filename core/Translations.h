// The texts of the user interface in the chosen language, read from INI files whose sections are
// named "Language:" followed by a language's name. Does not change once it is made.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace core {

/// The setting of the editor that comes before the language of the product's settings.
inline constexpr std::string_view kLanguageKey = "language";

class Translations {
public:
    /// `path`: a file, or a folder of which all "*.ini" files are read. Empty (and a line on
    /// stderr) if a file cannot be opened; bad lines are skipped. Of two texts with the same key
    /// the first counts.
    [[nodiscard]] static std::shared_ptr<Translations> create(const std::string& path,
                                                              const std::string& language);
    explicit Translations(const std::string& language);

    /// The text of `key` in the current language, else in English, else `key` itself. Keys that are
    /// empty or start with a digit are returned unchanged. Case is ignored.
    [[nodiscard]] std::string translate(const std::string& key) const;

    /// The text of `key` in the current language, else in English, with the lines "key.2" to
    /// "key.9" of that language behind it, if it has them; none if neither language has the key.
    [[nodiscard]] std::optional<std::string> find(const std::string& key) const;

    [[nodiscard]] const std::string& language() const { return m_language; }
    /// The current language as the files spell it; empty if they have no texts in it.
    [[nodiscard]] std::string spelledLanguage() const;
    /// The same texts with another current language.
    [[nodiscard]] std::shared_ptr<Translations> in(const std::string& language) const;
    /// The languages for which the files have texts, as spelled there.
    [[nodiscard]] const std::set<std::string>& languages() const { return m_languages; }

private:
    [[nodiscard]] bool load(const std::string& path);
    [[nodiscard]] bool loadFile(const std::string& path);
    [[nodiscard]] const std::string* findLine(const std::string& language,
                                              const std::string& key) const;
    [[nodiscard]] std::optional<std::string> findIn(const std::string& language,
                                                    const std::string& key) const;

    std::string m_language;
    std::set<std::string> m_languages;
    std::map<std::string, std::string> m_texts; ///< key: "language.key" in lower case
};

} // namespace core
