#include "core/EditorSettings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>

#include "core/File.h"
#include "core/FileError.h"
#include "core/Log.h"
#include "core/Numbers.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "core/Text.h"
#include "core/WholeFile.h"
#include "platform/FileSystem.h"

namespace core {
namespace {

constexpr std::size_t kMaxBytes = std::size_t{64} * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isSection(std::string_view line) {
    return trimmed(line).starts_with('[');
}

/// Whether the line begins the section `name`, given in small letters.
bool begins(std::string_view line, const std::string& name) {
    return isSection(line) && lowerCase(trimmed(line)) == "[" + name + "]";
}

/// Blank or a comment.
bool isEmpty(std::string_view line) {
    const std::string_view text = trimmed(line);
    return text.empty() || text.front() == ';' || text.front() == '#';
}

std::string_view keyOf(std::string_view line) {
    const std::size_t end = line.find('=');
    return isEmpty(line) || end == std::string_view::npos ? std::string_view()
                                                          : trimmed(line.substr(0, end));
}

/// The line of `key`, or where one could be added: before the first section.
template <class Lines>
auto lineOf(Lines& lines, std::string_view key) {
    const std::string wanted = lowerCase(key);
    return std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
        return isSection(line) || lowerCase(keyOf(line)) == wanted;
    });
}

std::vector<std::string> linesOf(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
    }
    return lines;
}

/// "key = value", or empty where no line can hold that.
std::string lineFor(std::string_view key, std::string_view value) {
    const std::string line = std::string(key) + " = " + std::string(value);
    const bool hasControl = std::any_of(line.begin(), line.end(), [](char sign) {
        return static_cast<unsigned char>(sign) < 0x20;
    });
    return key.empty() || keyOf(line) != key || isSection(line) || hasControl ? std::string()
                                                                              : line;
}

/// What of the file counts: of one that has grown beyond all measure, the whole lines at its
/// beginning.
std::optional<std::string> readHead(const std::string& path, bool& isCut) {
    File file;
    const std::int64_t size = file.open(path, "rb") ? file.size() : -1;
    isCut = size > static_cast<std::int64_t>(kMaxBytes);
    if (!isCut) {
        return readWholeFile(path, kMaxBytes);
    }
    std::string head(kMaxBytes, '\0');
    if (!file.read(head.data(), head.size())) {
        return std::nullopt;
    }
    head.resize(head.rfind('\n') + 1);
    return head;
}

} // namespace

EditorSettings::EditorSettings(std::string path) : m_path(std::move(path)), m_lines(readLines()) {}

std::vector<std::string> EditorSettings::readLines() const {
    if (m_path.empty() || !services().fileSystem->info(m_path)) {
        return {};
    }
    bool isCut = false;
    const std::optional<std::string> text = readHead(m_path, isCut);
    if (!text) {
        report("cannot be read");
        return {};
    }
    if (isCut) {
        report("is too large; its end does not count");
    }
    std::vector<std::string> lines = linesOf(*text);
    for (std::size_t i = 0; i < lines.size() && !isSection(lines[i]); ++i) {
        if (!isEmpty(lines[i]) && keyOf(lines[i]).empty()) {
            report("line " + std::to_string(i + 1) + " is no setting");
        }
    }
    return lines;
}

void EditorSettings::report(const std::string& what) const {
    if (!std::exchange(m_isReported, true)) {
        Log::get()->Write(Log::Level::warning, "Settings \"%s\": %s", m_path.c_str(),
                          validUtf8(what).c_str());
    }
}

std::optional<std::string> EditorSettings::find(std::string_view key) const {
    const auto line = lineOf(m_lines, key);
    if (line == m_lines.end() || isSection(*line)) {
        return std::nullopt;
    }
    return std::string(trimmed(std::string_view(*line).substr(line->find('=') + 1)));
}

bool EditorSettings::getBool(std::string_view key, bool usual) const {
    const std::optional<std::string> found = find(key);
    const std::string value = lowerCase(found.value_or(usual ? "true" : "false"));
    if (value != "true" && value != "false") {
        report(std::string(key) + " is neither true nor false");
        return usual;
    }
    return value == "true";
}

int EditorSettings::getInt(std::string_view key, int usual, int least, int most) const {
    const std::optional<std::string> value = find(key);
    if (!value) {
        return usual;
    }
    const std::optional<int> number = parseNumber<int>(*value);
    if (!number || *number < least || *number > most) {
        report(std::string(key) + " is no number from " + std::to_string(least) + " to " +
               std::to_string(most));
        return usual;
    }
    return *number;
}

std::string EditorSettings::getString(std::string_view key, std::string_view usual) const {
    return find(key).value_or(std::string(usual));
}

bool EditorSettings::set(std::string_view key, std::string_view value) {
    const std::string line = lineFor(key, value);
    if (line.empty()) {
        return false;
    }
    readAgain();
    const auto place = lineOf(m_lines, key);
    if (place != m_lines.end() && !isSection(*place)) {
        *place = line;
    } else {
        m_lines.insert(place, line);
    }
    return write();
}

std::vector<std::pair<std::string, std::string>>
EditorSettings::section(std::string_view name) const {
    std::vector<std::pair<std::string, std::string>> values;
    const std::string wanted = lowerCase(name);
    std::set<std::string> known;
    bool isInside = false;
    for (const std::string& line : m_lines) {
        isInside = isSection(line) ? begins(line, wanted) : isInside;
        const std::string_view key = keyOf(line);
        if (isInside && !key.empty() && known.insert(lowerCase(key)).second) {
            values.emplace_back(key, trimmed(std::string_view(line).substr(line.find('=') + 1)));
        }
    }
    return values;
}

bool EditorSettings::setIn(std::string_view section, std::string_view key,
                           std::optional<std::string_view> value) {
    const std::string line = lineFor(key, value.value_or(""));
    if (line.empty()) {
        return false;
    }
    readAgain();
    const std::string wanted = lowerCase(key);
    const std::string name = lowerCase(section);
    bool isInside = false;
    std::erase_if(m_lines, [&](const std::string& old) {
        isInside = isSection(old) ? begins(old, name) : isInside;
        return isInside && lowerCase(keyOf(old)) == wanted;
    });
    if (value) {
        auto place = std::find_if(m_lines.begin(), m_lines.end(),
                                  [&](const std::string& old) { return begins(old, name); });
        if (place == m_lines.end()) {
            place = m_lines.insert(place, "[" + std::string(section) + "]");
        }
        m_lines.insert(place + 1, line);
    }
    return write();
}

/// What cannot be read any more is replaced.
void EditorSettings::readAgain() {
    if (std::vector<std::string> now = readLines(); !now.empty()) {
        m_lines = std::move(now);
    }
}

bool EditorSettings::write() const {
    std::string text;
    for (const std::string& line : m_lines) {
        text += line + "\n";
    }
    SafeSave save;
    if (save.open(m_path, "wt") && save.file().writeString(text) && save.prepare() &&
        save.commit()) {
        return true;
    }
    report("cannot be written: " + save.failure().reason);
    return false;
}

} // namespace core
