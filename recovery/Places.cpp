#include "recovery/Places.h"

#include <boost/uuid/name_generator_sha1.hpp>
#include <boost/uuid/nil_generator.hpp>

#include "core/Paths.h"

namespace recovery {
namespace {

/// Bytes of a long name that stay legible; the digest follows.
constexpr std::size_t kLegibleBytes = 60;
/// Not part of any escape, so a shortened name never equals a complete one.
constexpr std::string_view kDigestMark = "%%";

std::string inWorkingDirectory(std::string_view name) {
    std::string path = core::currentDirectory();
    return path.empty() ? path : path.append(name);
}

void appendHex(std::string& text, unsigned char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
}

bool isBetween(char first, char c, char last) {
    return first <= c && c <= last;
}

/// Dots are escaped as well: at the end of a name some systems drop them, at its start others hide
/// the file, and between them is where a device name may end ("con.txt").
void appendEncoded(std::string& text, char c) {
    if (isBetween('a', c, 'z') || isBetween('0', c, '9') || c == '-') {
        text += c;
    } else if (isBetween('A', c, 'Z')) {
        text += '+';
        text += static_cast<char>(c - 'A' + 'a');
    } else if (c == ' ') {
        text += '_';
    } else {
        text += '%';
        appendHex(text, static_cast<unsigned char>(c));
    }
}

/// SHA-1: no two names are known to share one.
std::string digestOf(std::string_view name) {
    boost::uuids::name_generator_sha1 generator(boost::uuids::nil_uuid());
    std::string text;
    for (const unsigned char byte : generator(std::string(name))) {
        appendHex(text, byte);
    }
    return text;
}

} // namespace

std::string draftsFolder() {
    return inWorkingDirectory("Drafts/");
}

std::string backupsFolder() {
    return inWorkingDirectory("Backups/");
}

std::string cacheFolder() {
    return inWorkingDirectory("Cache/");
}

std::string editorIniPath() {
    return inWorkingDirectory("Editor.ini");
}

std::string recentScenesPath() {
    return inWorkingDirectory("Recent.txt");
}

std::string encodedName(std::string_view name) {
    if (name.empty()) {
        return "%";
    }
    std::string text;
    std::size_t legible = 0; // ends behind a whole character
    for (const char c : name) {
        appendEncoded(text, c);
        if (text.size() <= kLegibleBytes) {
            legible = text.size();
        }
        if (text.size() > kMaxEncodedBytes) {
            return text.substr(0, legible).append(kDigestMark) + digestOf(name);
        }
    }
    if (core::isDeviceName(text)) {
        std::string escaped = "%";
        appendHex(escaped, static_cast<unsigned char>(text.front()));
        return escaped + text.substr(1);
    }
    return text;
}

} // namespace recovery
