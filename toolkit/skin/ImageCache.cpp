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

std::size_t ImageCache::Image::bytes() const {
    return bitmap ? bytesOf(bitmap->size()) : 0;
}

std::shared_ptr<const platform::Bitmap> ImageCache::load(const Skin& skin,
                                                         const std::string& file) {
    const std::string key = skin.identity() + '\n' + file;
    if (const auto known = m_images.find(key); known != m_images.end()) {
        known->second.lastLoad = ++m_loads;
        return known->second.bitmap;
    }
    Image image{nullptr, ++m_loads};
    if (const auto bytes = skin.read(file)) {
        auto bitmap = decodeImage(*bytes);
        const std::size_t size = bitmap ? bytesOf(bitmap->size()) : 0;
        if (m_bytes + size > kMaxBytes) {
            forgetUnused();
        }
        if (bitmap && m_bytes + size <= kMaxBytes) {
            image.bitmap = std::make_shared<const platform::Bitmap>(std::move(*bitmap));
            m_bytes += image.bytes();
        }
    }
    if (image.bitmap == nullptr) {
        core::Log::get()->Error("Unable to load image %s", skin.describe(file).c_str());
    }
    m_images.emplace(key, image); // which is in use until it is handed over
    forgetUnused();
    return image.bitmap;
}

std::shared_ptr<const platform::Bitmap> ImageCache::loadDark(const Skin& skin,
                                                             const std::string& file) {
    const std::string dark = skin.darkFile(file);
    auto bitmap = load(skin, dark);
    return bitmap != nullptr || dark == file ? bitmap : load(skin, file);
}

void ImageCache::forgetUnused() {
    std::size_t unused = 0;
    for (const auto& [key, image] : m_images) {
        unused += image.isUnused() ? image.bytes() : 0;
    }
    while (unused > kMaxUnusedBytes) {
        auto oldest = m_images.end();
        for (auto at = m_images.begin(); at != m_images.end(); ++at) {
            const bool isOlder =
                oldest == m_images.end() || at->second.lastLoad < oldest->second.lastLoad;
            oldest = at->second.isUnused() && isOlder ? at : oldest;
        }
        unused -= oldest->second.bytes();
        m_bytes -= oldest->second.bytes();
        m_images.erase(oldest);
    }
}

} // namespace toolkit
