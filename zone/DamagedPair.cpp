#include "zone/DamagedPair.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/File.h"
#include "core/Paths.h"
#include "core/SafeSave.h"
#include "core/Services.h"
#include "core/StandardError.h"
#include "platform/FileSystem.h"

namespace zone {
namespace {

constexpr int kMaxCopies = 3;
constexpr std::size_t kStep = std::size_t{256} * 1024;
/// The binary file first: it holds the work.
constexpr std::array kExtensions{".bin", ".xml"};

bool exists(const std::string& path) {
    return core::services().fileSystem->info(path).has_value();
}

void removeFile(const std::string& path) {
    int error = 0;
    (void)core::services().fileSystem->removeFile(path, error);
}

bool copyBytes(core::File& from, core::File& to) {
    // By the size, as the end of a file and a failure to read look the same.
    std::int64_t left = from.size();
    std::vector<std::uint8_t> bytes(kStep);
    while (left > 0) {
        const auto now = static_cast<std::size_t>(std::min<std::int64_t>(left, kStep));
        if (!from.read(bytes.data(), now) || !to.write(bytes.data(), now)) {
            return false;
        }
        left -= static_cast<std::int64_t>(now);
    }
    return left == 0;
}

/// Brings a copy of `path` to the disk without its name yet. Empty, or why it failed.
core::FileError prepareCopy(const std::string& path, const std::string& copy,
                            core::SafeSave& save) {
    core::File original;
    const bool isOpen = original.open(path, "rb");
    if (isOpen && save.open(copy, "wb") && copyBytes(original, save.file()) && save.prepare()) {
        return {};
    }
    if (!save.failure().empty()) {
        return save.failure();
    }
    const int error = original.lastError();
    core::FileError failure{path, error == 0 ? "cannot be read"
                                             : core::services().fileSystem->errorText(error)};
    core::writeStandardError("Not saved: " + failure.text());
    return failure;
}

/// Without an extension; empty when all are taken.
std::string freeBase(const std::string& pair) {
    for (int number = 1; number <= kMaxCopies; ++number) {
        std::string base = pair + ".damaged-" + std::to_string(number);
        if (std::none_of(kExtensions.begin(), kExtensions.end(),
                         [&](const char* extension) { return exists(base + extension); })) {
            return base;
        }
    }
    return {};
}

} // namespace

KeptPair keepDamagedPair(const std::string& basePath) {
    const std::string pair = basePath + "-ZoneInfo";
    const std::string base = freeBase(pair);
    KeptPair kept;
    kept.isFull = base.empty();
    if (kept.isFull) {
        return kept;
    }
    std::array<core::SafeSave, kExtensions.size()> copies;
    std::array<bool, kExtensions.size()> isThere{};
    for (std::size_t i = 0; i < copies.size() && kept.failure.empty(); ++i) {
        isThere[i] = exists(pair + kExtensions[i]);
        if (isThere[i]) {
            kept.failure = prepareCopy(pair + kExtensions[i], base + kExtensions[i], copies[i]);
        }
    }
    for (std::size_t i = 0; i < copies.size() && kept.failure.empty(); ++i) {
        if (isThere[i] && copies[i].commit()) {
            kept.name = core::fileName(base);
        } else if (isThere[i]) {
            kept.failure = copies[i].failure();
            if (!kept.name.empty()) { // half a pair must not use up a number
                removeFile(base + kExtensions[0]);
                kept.name.clear();
            }
        }
    }
    return kept;
}

} // namespace zone
