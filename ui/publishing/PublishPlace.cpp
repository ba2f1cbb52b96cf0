#include "ui/publishing/PublishPlace.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "core/Paths.h"
#include "core/Text.h"
#include "platform/FileSystem.h"
#include "publish/PublishFolder.h"
#include "recovery/Places.h"

namespace ui {
namespace {

constexpr const char* kPublished = "Published";

/// Whether it could be what another name is encoded as.
bool looksEncoded(std::string_view name) {
    return name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-_%") ==
               std::string_view::npos &&
           recovery::encodedName(name) != name;
}

/// Windows drops blanks before the dot, and knows ports with raised digits.
bool isDevice(const std::string& name) {
    const std::string stem = core::lowerCase(name.substr(0, name.find('.')));
    const bool hasRaisedDigit = stem.starts_with("com\xC2") || stem.starts_with("lpt\xC2");
    return hasRaisedDigit || core::isDeviceName(stem.substr(0, stem.find_last_not_of(' ') + 1));
}

/// Whether it is a file name on every system, and nobody else's.
bool isFileName(const std::string& name) {
    constexpr std::string_view kForbidden = "<>:\"/\\|?*~"; // the last begins a second, short name
    return !name.empty() && name.size() <= recovery::kMaxEncodedBytes &&
           core::validUtf8(name) == name &&
           std::none_of(name.begin(), name.end(), core::isControl) &&
           name.find_first_of(kForbidden) == std::string::npos && name.front() != ' ' &&
           name.front() != '.' && name.back() != ' ' && name.back() != '.' && !isDevice(name) &&
           name.find(".quorvel-") == std::string::npos && // beside the folder, while it is made
           !looksEncoded(name);
}

/// The folder in which pages are.
class Parent {
public:
    Parent(platform::FileSystem& files, const std::string& path)
        : m_files(files), m_path(core::withSeparator(path)) {
        (void)m_files.list(path, m_entries); // none is as good as an empty one
    }

    [[nodiscard]] bool hasPage(const std::string& name) const {
        return has(name) &&
               core::isFile(core::withSeparator(m_path + name) + std::string(publish::kListName));
    }
    /// Whether a page of this name would be a new one or replace its own.
    [[nodiscard]] bool isFree(const std::string& name) const {
        const auto folded = [](const std::string& text) {
            return core::foldCase(core::displayText(text));
        };
        const bool isTaken = std::any_of(
            m_entries.begin(), m_entries.end(), [&](const platform::FolderEntry& entry) {
                return entry.name != name && folded(entry.name) == folded(name);
            });
        std::vector<platform::FolderEntry> inside;
        return !isTaken && (!has(name) || hasPage(name) ||
                            (m_files.list(m_path + name, inside) && inside.empty()));
    }

private:
    [[nodiscard]] bool has(const std::string& name) const {
        return std::any_of(m_entries.begin(), m_entries.end(),
                           [&](const platform::FolderEntry& entry) { return entry.name == name; });
    }

    platform::FileSystem& m_files;
    std::string m_path;
    std::vector<platform::FolderEntry> m_entries;
};

} // namespace

std::string usualPublishFolder(platform::FileSystem& files, const std::string& scene) {
    return std::string(kPublished) + "/" + publishFolderName(files, kPublished, scene);
}

std::string publishFolderName(platform::FileSystem& files, const std::string& parent,
                              const std::string& scene) {
    const Parent folder(files, parent);
    const std::string encoded = recovery::encodedName(scene);
    if (!folder.hasPage(encoded) && isFileName(scene) && folder.isFree(scene)) {
        return scene;
    }
    // One of small letters alone is encoded as itself; no encoded name of a text ends like that.
    return folder.isFree(encoded) ? encoded : encoded + "%";
}

} // namespace ui
