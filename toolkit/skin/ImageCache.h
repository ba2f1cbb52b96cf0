// The skin's images, decoded once in a process and shared by all windows. UI thread only.
#pragma once

#include <cstddef>
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

    static ImageCache& get();

    /// Null when the file is missing or not an image, or there are kMaxBytes; that is remembered
    /// too, and logged once.
    std::shared_ptr<const platform::Bitmap> load(const Skin& skin, const std::string& file);
    /// Forgets everything, so that changed files are read again.
    void clear() {
        m_images.clear();
        m_bytes = 0;
    }

private:
    ImageCache() = default;

    std::unordered_map<std::string, std::shared_ptr<const platform::Bitmap>> m_images;
    std::size_t m_bytes = 0; ///< of all images
};

} // namespace toolkit
