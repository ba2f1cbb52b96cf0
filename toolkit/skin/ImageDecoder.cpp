#include "toolkit/skin/ImageDecoder.h"

#include <climits>
#include <cstdlib>
#include <memory>

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_ONLY_GIF
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_MAX_DIMENSIONS 8192
// Zeroed: a scan may name tables that the file never defines, and reads what lies there.
#define STBI_MALLOC(size) std::calloc(1, size)
#define STBI_REALLOC(memory, size) std::realloc(memory, size)
#define STBI_FREE(memory) std::free(memory)
#include <stb_image.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#include "toolkit/skin/JpegTables.h"

namespace toolkit {
namespace {

static_assert(kMaxImageSide == STBI_MAX_DIMENSIONS);

struct PixelsFree {
    void operator()(stbi_uc* pixels) const { stbi_image_free(pixels); }
};

std::uint32_t premultiplied(const stbi_uc* rgba) {
    const std::uint32_t alpha = rgba[3];
    const auto part = [alpha](std::uint32_t value) { return (value * alpha + 127U) / 255U; };
    return alpha << 24U | part(rgba[0]) << 16U | part(rgba[1]) << 8U | part(rgba[2]);
}

} // namespace

std::optional<platform::Bitmap> decodeImage(std::span<const std::uint8_t> bytes) {
    if (bytes.empty() || bytes.size() > INT_MAX || !jpegTablesAreSound(bytes)) {
        return std::nullopt;
    }
    const int length = static_cast<int>(bytes.size());
    int width = 0;
    int height = 0;
    int channels = 0;
    // The header alone tells the size: nothing is allocated for a picture that is refused.
    if (stbi_info_from_memory(bytes.data(), length, &width, &height, &channels) == 0 || width < 1 ||
        height < 1 || width > kMaxImageSide || height > kMaxImageSide ||
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) > kMaxImagePixels) {
        return std::nullopt;
    }
    const std::unique_ptr<stbi_uc, PixelsFree> pixels(
        stbi_load_from_memory(bytes.data(), length, &width, &height, &channels, STBI_rgb_alpha));
    if (pixels == nullptr) {
        return std::nullopt;
    }
    platform::Bitmap bitmap({width, height});
    const stbi_uc* from = pixels.get();
    for (int y = 0; y < height; ++y) {
        std::uint32_t* row = bitmap.row(y);
        for (int x = 0; x < width; ++x, from += 4) {
            row[x] = premultiplied(from);
        }
    }
    return bitmap;
}

} // namespace toolkit
