// Any text as an image attribute, drawn at a place and a size that come from it too.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "core/Text.h"
#include "platform/raster/RasterCanvas.h"
#include "tests/support/gui/FakeGui.h"
#include "toolkit/skin/SkinImage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto parsed = toolkit::ImageAttribute::parse(core::displayText(text));
    const int number = size > 0 ? data[size - 1] : 1;
    const auto bitmap =
        std::make_shared<const platform::Bitmap>(platform::Size{1 + number % 16, 1 + number / 16});
    const toolkit::SkinImage image{bitmap, parsed.corner, parsed.dest};
    platform::Bitmap picture({64, 48});
    test::NoText noText;
    platform::raster::RasterCanvas canvas(picture, noText, {2, 2, 62, 46});
    image.draw(canvas, image.placeIn(platform::Rect::at(number - 100, 5, number % 50, 20)));
    return 0;
}
