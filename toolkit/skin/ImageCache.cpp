#include "toolkit/skin/ImageCache.h"

#include <cstdint>
#include <utility>

#include "core/Log.h"
#include "platform/Geometry.h"
#include "toolkit/skin/ImageDecoder.h"

namespace toolkit {
namespace {

std::size_t bytesOf(platform::Size size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
           sizeof(std::uint32_t);
}

} // namespace

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
        if (auto bitmap = decodeImage(*bytes);
            bitmap && m_bytes + bytesOf(bitmap->size()) <= kMaxBytes) {
            image = std::make_shared<const platform::Bitmap>(std::move(*bitmap));
            m_bytes += bytesOf(image->size());
        }
    }
    if (image == nullptr) {
        core::Log::get()->Error("Unable to load image %s", skin.describe(file).c_str());
    }
    m_images.emplace(key, image);
    return image;
}

} // namespace toolkit
