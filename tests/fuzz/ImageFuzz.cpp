// Any bytes as a picture: what decodes has a size within the limits and can be read whole.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "tests/fuzz/Require.h"
#include "toolkit/skin/ImageDecoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto image = toolkit::decodeImage({data, size});
    if (!image) {
        return 0;
    }
    const platform::Size sides = image->size();
    fuzz::require(std::min(sides.width, sides.height) >= 1 &&
                  std::max(sides.width, sides.height) <= toolkit::kMaxImageSide);
    std::uint32_t sum = 0;
    for (int y = 0; y < sides.height; ++y) {
        sum += image->at(0, y) + image->at(sides.width - 1, y);
    }
    return sum == 1 ? 1 : 0;
}
