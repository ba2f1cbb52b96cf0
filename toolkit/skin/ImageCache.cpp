#include "toolkit/skin/ImageCache.h"

#include <utility>

#include "core/Log.h"
#include "toolkit/skin/ImageDecoder.h"

namespace toolkit {

ImageCache& ImageCache::get() {
    static ImageCache cache;
    return cache;
}

std::shared_ptr<const platform::Bitmap> ImageCache::load(const Skin& skin,
                                                         const std::string& file) {
    const std::string key = skin.identity() + '\n' + file;
    const auto known = m_images.find(key);
    if (known != m_images.end()) {
        return known->second;
    }
    std::shared_ptr<const platform::Bitmap> image;
    if (const auto bytes = skin.read(file)) {
        if (auto bitmap = decodeImage(*bytes)) {
            image = std::make_shared<const platform::Bitmap>(std::move(*bitmap));
        }
    }
    if (image == nullptr) {
        core::Log::get()->Error("Unable to load image %s", skin.describe(file).c_str());
    }
    m_images.emplace(key, image);
    return image;
}

} // namespace toolkit
