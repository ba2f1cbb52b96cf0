// Any bytes as a kept still: what is taken for one fits where it is shown, and is what would be
// written for it. The checksum is put right first, so that changed bytes get past it.
#include <cstddef>
#include <cstdint>
#include <string>

#include "stills/StillFiles.h"
#include "tests/fuzz/FuzzServices.h"
#include "tests/fuzz/Require.h"

namespace {

using fuzz::require;

constexpr const char* kClip = "/home/a.ogv";
constexpr std::size_t kChecksumAt = 8;
constexpr std::size_t kChecked = 16;

void putChecksumRight(std::string& file) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (std::size_t i = kChecked; i < file.size(); ++i) {
        hash = (hash ^ static_cast<unsigned char>(file[i])) * 0x100000001B3U;
    }
    for (std::size_t i = kChecksumAt; i < kChecked && i < file.size(); ++i) {
        file[i] = static_cast<char>(hash & 0xFFU);
        hash >>= 8U;
    }
}

stills::Still stillOfClip() {
    stills::Still still;
    still.bytes = 7;
    still.modified = 9;
    still.exists = true;
    return still;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Services services;
    stills::StillFiles kept(services.files, "/home/Cache/", 1U << 20U);
    stills::Still still = stillOfClip();
    still.picture = platform::Bitmap({2, 1});
    still.frame = {640, 360};
    kept.write(kClip, still);
    std::string& file = services.files.files.begin()->second;
    const std::string written = file;
    require(kept.read(kClip, still));

    file.assign(data, data + size);
    if (size > 0 && data[0] % 2 == 1) {
        putChecksumRight(file);
    }
    stills::Still found = stillOfClip();
    if (kept.read(kClip, found)) {
        const platform::Size box = found.picture.size();
        require(box.width >= 1 && box.width <= stills::kLargestBox.width);
        require(box.height >= 1 && box.height <= stills::kLargestBox.height);
        const std::string given = file;
        kept.write(kClip, found);
        require(services.files.files.begin()->second == given);
    }
    return 0;
}
