#include "tests/support/PseudoTexts.h"

#include <algorithm>
#include <cstddef>
#include <regex>
#include <sstream>

#include "tests/support/TempFolder.h"

namespace support {
namespace {

constexpr std::string_view kOpen = "\xE2\x80\xB9";
constexpr std::string_view kClose = "\xE2\x80\xBA";
constexpr char16_t kOpenSign = 0x2039;
constexpr char16_t kCloseSign = 0x203A;
constexpr std::size_t kLongestLine = 196; ///< bytes that the reader takes

/// `text` with its places outside of the signs, as what comes there is looked up by itself.
std::string withOpenPlaces(const std::string& text) {
    static const std::regex place(R"(\{\d\})");
    return std::regex_replace(text, place, std::string(kClose) + "$&" + std::string(kOpen));
}

/// A line "Key = text" in the pseudo language.
std::string pseudoLine(const std::string& line) {
    const std::size_t text = line.find('=') + 2;
    const std::string open = withOpenPlaces(line.substr(text));
    std::string filler;
    const std::size_t more = (line.size() - std::min(text, line.size())) * 2 / 5;
    while (filler.size() + 2 < more) { // the signs are as wide as one letter
        filler += filler.size() % 6 == 0 ? ' ' : 'e';
    }
    const std::size_t room = kLongestLine - std::min(kLongestLine, text + open.size() + 6);
    return line.substr(0, text) + std::string(kOpen) + open + filler.substr(0, room) +
           std::string(kClose);
}

} // namespace

std::shared_ptr<core::Translations> textsIn(const std::string& language, const std::string& path) {
    if (language != "Pseudo") {
        return core::Translations::create(path, language);
    }
    std::istringstream catalogue(readBytes(path));
    std::string pseudo = "[Language:Pseudo]\n";
    bool isEnglish = false;
    for (std::string line; std::getline(catalogue, line);) {
        if (line.starts_with("[")) {
            isEnglish = line.starts_with("[Language:English]");
        } else if (isEnglish && line.find(" = ") != std::string::npos && line[0] != ';') {
            pseudo += pseudoLine(line) + "\n";
        }
    }
    writeBytes("Pseudo.ini", pseudo);
    return core::Translations::create("Pseudo.ini", language);
}

std::u16string notTranslated(std::u16string_view text) {
    std::u16string rest;
    int depth = 0;
    for (const char16_t sign : text) {
        depth += sign == kOpenSign ? 1 : 0;
        rest += depth == 0 ? sign : u' '; // names on both sides stay apart
        depth -= sign == kCloseSign && depth > 0 ? 1 : 0;
    }
    return rest;
}

} // namespace support
