// Any bytes as a zipped skin: every entry is read or refused within the limits.
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/fuzz/Require.h"
#include "toolkit/skin/ZipArchive.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto zip = toolkit::ZipArchive::open({data, data + size});
    if (!zip) {
        return 0;
    }
    for (const std::string& name : zip->names()) {
        const auto bytes = zip->read(name);
        fuzz::require(!bytes || bytes->size() <= toolkit::ZipArchive::kMaxEntryBytes);
    }
    return 0;
}
