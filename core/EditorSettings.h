// What the author has chosen for this editor, kept in "Editor.ini": lines "key = value". Keys are
// case-insensitive; of two lines with one key the first counts. Lines that this program does not
// know, comments and sections stay as they are; what is beyond 64 KB is not read, and goes with the
// next change. Main thread only.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace core {

class EditorSettings {
public:
    /// Reads the file at `path`; a missing one gives the defaults, silently. So does whatever is
    /// odd in it or keeps it from being read, with one log line in all.
    explicit EditorSettings(std::string path);

    /// Whether unsaved work is kept as a draft.
    [[nodiscard]] bool keepDrafts() const { return getBool(kKeepDrafts, true); }
    bool setKeepDrafts(bool keep) { return set(kKeepDrafts, keep ? "true" : "false"); }
    /// Whether saving keeps the version that it replaces.
    [[nodiscard]] bool keepBackups() const { return getBool(kKeepBackups, true); }
    bool setKeepBackups(bool keep) { return set(kKeepBackups, keep ? "true" : "false"); }

    /// By how much all windows are larger than by the system's scale, in percent.
    [[nodiscard]] int scale() const { return getInt(kScale, 100, 50, 400); }
    bool setScale(int percent) { return set(kScale, std::to_string(percent)); }

    // Any key; who uses one names it. `usual` is what an absent or odd value counts as.
    [[nodiscard]] bool getBool(std::string_view key, bool usual) const;
    [[nodiscard]] int getInt(std::string_view key, int usual, int least, int most) const;
    [[nodiscard]] std::string getString(std::string_view key, std::string_view usual) const;
    /// The keys of a section and their values, in the order of the file. The section's name is
    /// case-insensitive; its lines after another section's count as well.
    [[nodiscard]] std::vector<std::pair<std::string, std::string>>
    section(std::string_view name) const;
    /// As set, in a section, which is added at the end of the file when it is not there. Without a
    /// value the key goes.
    bool setIn(std::string_view section, std::string_view key,
               std::optional<std::string_view> value);

    /// Changes one value for this run and writes the file whole; what another program has written
    /// to other keys meanwhile stays. False, with a log line, if the file cannot be written; false,
    /// and nothing has changed, for a key or value that no line can hold (control characters; a
    /// key that is empty or has "=", or looks like a comment or section).
    bool set(std::string_view key, std::string_view value);

private:
    static constexpr std::string_view kKeepDrafts = "keepDrafts";
    static constexpr std::string_view kKeepBackups = "keepBackups";
    static constexpr std::string_view kScale = "scale";

    [[nodiscard]] std::vector<std::string> readLines() const;
    [[nodiscard]] std::optional<std::string> find(std::string_view key) const;
    /// Reads what another program may have written since.
    void readAgain();
    [[nodiscard]] bool write() const;
    /// The log line, once.
    void report(const std::string& what) const;

    std::string m_path;
    mutable bool m_isReported = false;
    std::vector<std::string> m_lines; ///< of the file, without line ends
};

} // namespace core
