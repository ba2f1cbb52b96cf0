// Where a window's layout and images come from: a folder ("UI/") or, where there is none, a zip
// beside it ("UI.zip"). UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/skin/ZipArchive.h"

namespace toolkit {

class Skin {
public:
    static constexpr std::size_t kMaxFileBytes = std::size_t{16} << 20U;
    static constexpr std::size_t kMaxZipBytes = std::size_t{64} << 20U;

    /// `folder`: UTF-8, relative to the current directory or absolute. Skins are shared and kept by
    /// their full path while anyone holds them.
    static std::shared_ptr<const Skin> open(const std::string& folder);

    /// A file of the skin, "/" between folders; empty when it is missing, too large or its name
    /// leads out of the skin.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> read(const std::string& file) const;
    /// What stands for `file` in the dark skin: the one in its folder "Dark", or the file itself
    /// where that has none or the skin cannot be dark.
    [[nodiscard]] std::string darkFile(const std::string& file) const;
    /// `file` as messages name it: folder and name.
    [[nodiscard]] std::string describe(const std::string& file) const;
    /// The same text for the same source of files.
    [[nodiscard]] const std::string& identity() const { return m_identity; }

private:
    Skin() = default;
    [[nodiscard]] bool has(const std::string& file) const;

    std::string m_folder; ///< as given, with a final separator
    std::string m_identity;
    std::optional<ZipArchive> m_zip;
    bool m_canBeDark = false;
};

} // namespace toolkit
