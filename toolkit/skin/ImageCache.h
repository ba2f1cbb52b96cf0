// The skin's images, decoded once and shared by all windows. Those that no window shows any more
// stay while there is room for them, as the next window may show them. UI thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/Bitmap.h"
#include "toolkit/skin/Skin.h"

namespace toolkit {

class ImageCache {
public:
    /// What all images together may take, so that no skin can exhaust the memory.
    static constexpr std::size_t kMaxBytes = std::size_t{128} << 20U;
    /// What images that nobody holds may take: the icons for one scale, not those for all. What
    /// windows held stays after them until the next image is read.
    static constexpr std::size_t kMaxUnusedBytes = std::size_t{2} << 20U;

    static ImageCache& get();

    /// Null when the file is missing or not an image, or there are kMaxBytes; that is remembered
    /// too, and logged once.
    std::shared_ptr<const platform::Bitmap> load(const Skin& skin, const std::string& file);
    /// What stands for it in the dark skin; the file itself where that is no image.
    std::shared_ptr<const platform::Bitmap> loadDark(const Skin& skin, const std::string& file);
    /// Forgets everything, so that changed files are read again.
    void clear() {
        m_images.clear();
        m_bytes = 0;
    }

private:
    struct Image {
        std::shared_ptr<const platform::Bitmap> bitmap;
        std::uint64_t lastLoad = 0;

        [[nodiscard]] bool isUnused() const { return bitmap.use_count() == 1; }
        [[nodiscard]] std::size_t bytes() const;
    };

    ImageCache() = default;

    /// The one that was loaded longest ago goes first.
    void forgetUnused();

    std::unordered_map<std::string, Image> m_images;
    std::size_t m_bytes = 0; ///< of all images
    std::uint64_t m_loads = 0;
};

} // namespace toolkit
