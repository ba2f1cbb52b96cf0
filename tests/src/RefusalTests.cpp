// Bad files are rejected with one of the library's messages; damage after the headers is tolerated.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "src/TheoraException.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/SoundMaker.h"

namespace {

using support::Bytes;
using support::Sound;

constexpr const char* kNoData = "End of file found prematurely";
constexpr const char* kBadHeaders = "Error parsing Theora stream headers.";

/// The message that loading fails with; empty when it does not.
std::string refusal(const Bytes& file) {
    try {
        const PlaybackSession session(file);
    } catch (const theora::TheoraGenericException& error) {
        EXPECT_EQ(error.getFile(), "src\\Theora\\TheoraVideoClip_Theora");
        return error.getMessage();
    }
    return {};
}

/// A stream of these packets, one per page.
Bytes pagesOf(const std::vector<Bytes>& packets) {
    support::OggPager pager(5);
    Bytes file;
    for (const Bytes& packet : packets) {
        const auto page = pager.pages({{packet, 0}}, {})[0].bytes;
        file.insert(file.end(), page.begin(), page.end());
    }
    return file;
}

/// An identification header that claims another size, in units of 16 pixels.
Bytes resized(Bytes header, unsigned columns, unsigned rows) {
    std::size_t at = 10; // offset of the size
    for (const unsigned byte : {columns >> 8U, columns & 0xFFU, rows >> 8U, rows & 0xFFU}) {
        header[at++] = static_cast<std::uint8_t>(byte);
    }
    return header;
}

TEST(Refusal, FilesWithoutAPlayableTheoraStreamAreNamedSo) {
    const Bytes clip = support::makeClip({});
    const Bytes head(clip.begin() + 28, clip.begin() + 70); // the packet of the first page
    const auto sound = support::encodeSound(1.0);
    Bytes twice(clip.begin(), clip.begin() + 70);
    twice.insert(twice.end(), clip.begin(), clip.end());
    const Bytes badBooks = {5, 'v', 'o', 'r', 'b', 'i', 's', 0xFF};
    const struct {
        const char* name;
        Bytes file;
        const char* message;
    } cases[] = {
        {"only a first page that comes twice", twice, ""},
        {"nothing at all", {}, kNoData},
        {"no Ogg page", Bytes(100000, 'O'), kNoData},
        {"cut in the headers", Bytes(clip.begin(), clip.begin() + 200), kNoData},
        {"sound alone", pagesOf({sound.headers[0].bytes, sound.headers[1].bytes}),
         "invalid stream"},
        {"frames before the headers' end", pagesOf({head, {0, 1, 2}}), "invalid theora stream"},
        {"a bad second header", pagesOf({head, {0x81, 'x', 'y'}}), kBadHeaders},
        {"too wide a size", pagesOf({resized(head, 1100, 3)}), kBadHeaders},
        {"too large a size", pagesOf({resized(head, 1000, 1000)}), kBadHeaders},
        {"a size of nothing", pagesOf({resized(head, 0, 3)}), kBadHeaders},
        {"sound whose books are bad",
         pagesOf({sound.headers[0].bytes, sound.headers[1].bytes, badBooks}),
         "Error parsing vorbis stream headers"},
    };
    for (const auto& item : cases) {
        EXPECT_EQ(refusal(item.file), item.message) << item.name;
    }
}

TEST(Damage, EveryCutOfAFileIsRefusedOrKeepsTheFramesBeforeIt) {
    const Bytes clip = support::makeClip({.frames = 5, .quality = 10, .sound = Sound::after});
    int most = 0;
    for (std::ptrdiff_t size = 0; size < std::ssize(clip); size += 37) {
        const Bytes cut(clip.begin(), clip.begin() + size);
        if (!refusal(cut).empty()) {
            continue;
        }
        PlaybackSession session(cut);
        const int frames = session.clip().getNumFrames();
        EXPECT_NE(frames, 0) << size; // headers alone: not known
        if (frames > 0) {
            EXPECT_EQ(session.seek(frames - 1).pictureNumber, frames - 1) << size;
        }
        most = std::max(most, frames);
    }
    EXPECT_EQ(most, 5);
}

} // namespace
