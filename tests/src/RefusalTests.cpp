// Bad files are refused with one of the library's messages; damage behind the headers is survived.
#include <algorithm>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "src/TheoraException.h"
#include "tests/src/MemorySource.h"
#include "tests/src/PlaybackSession.h"
#include "tests/support/ClipMaker.h"
#include "tests/support/SoundMaker.h"

namespace {

using support::Bytes;

const std::set<std::string> kMessages = {
    "Error parsing Theora stream headers.", "invalid theora stream",
    "Error parsing vorbis stream headers", "invalid stream", "End of file found prematurely"};

/// The message that loading fails with; empty when it does not.
std::string refusal(Bytes file) {
    theora::TheoraVideoManager manager(1);
    try {
        (void)manager.createClip(std::make_unique<MemorySource>(std::move(file)),
                                 theora::TheoraOutputMode::TH_RGB);
    } catch (const theora::TheoraGenericException& error) {
        EXPECT_EQ(error.getFile(), "src\\Theora\\TheoraVideoClip_Theora");
        EXPECT_EQ(kMessages.count(error.getMessage()), 1U) << error.getMessage();
        return error.getMessage();
    }
    return {};
}

Bytes soundOnly() {
    const auto sound = support::encodeSound(1.0, support::kClipSoundRate);
    support::OggPager pager(9);
    Bytes file;
    std::vector<support::OggPacketData> packets = sound.headers;
    packets.insert(packets.end(), sound.data.begin(), sound.data.end());
    for (const auto& page : pager.pages(packets, {})) {
        file.insert(file.end(), page.bytes.begin(), page.bytes.end());
    }
    return file;
}

/// A stream of our own packets, one a page.
Bytes pagesOf(const std::vector<Bytes>& packets) {
    support::OggPager pager(5);
    Bytes file;
    for (const Bytes& packet : packets) {
        for (const auto& page : pager.pages({{packet, 0}}, {})) {
            file.insert(file.end(), page.bytes.begin(), page.bytes.end());
        }
    }
    return file;
}

/// An identification header; sizes in units of 16 pixels.
Bytes identification(unsigned columns, unsigned rows) {
    Bytes packet = {0x80, 't', 'h', 'e', 'o', 'r', 'a', 3, 2, 1};
    const auto add = [&](std::uint64_t value, int bytes) {
        for (int i = bytes - 1; i >= 0; --i) {
            packet.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    add(columns, 2);
    add(rows, 2);
    add(std::uint64_t{columns} * 16, 3);
    add(std::uint64_t{rows} * 16, 3);
    add(0, 2);
    add(25, 4);
    add(1, 4);
    add(0x000001000001, 6);
    add(0, 4);
    add(0, 3);
    add(0x00C0, 2);
    return packet;
}

TEST(Refusal, FilesWithoutAPlayableTheoraStreamAreNamedSo) {
    const Bytes clip = support::makeClip({});
    Bytes garbage(100000);
    std::generate(garbage.begin(), garbage.end(), [random = std::mt19937(1)]() mutable {
        return static_cast<std::uint8_t>(random());
    });
    Bytes damagedSetup = clip;
    const Bytes tag = {0x82, 't', 'h', 'e', 'o', 'r', 'a'};
    const auto setup =
        std::search(damagedSetup.begin(), damagedSetup.end(), tag.begin(), tag.end());
    ASSERT_NE(setup, damagedSetup.end());
    *(setup + 60) ^= 0x55; // the page's check sum no longer fits
    const Bytes data = {0x00, 1, 2, 3};
    const struct {
        const char* name;
        Bytes file;
        const char* message;
    } cases[] = {
        {"nothing at all", {}, "End of file found prematurely"},
        {"no Ogg page", garbage, "End of file found prematurely"},
        {"sound alone", soundOnly(), "invalid stream"},
        {"cut in the headers", Bytes(clip.begin(), clip.begin() + 200),
         "End of file found prematurely"},
        {"a damaged header page", damagedSetup, nullptr},
        {"frames before the headers' end", pagesOf({identification(4, 3), data}),
         "invalid theora stream"},
        {"a bad second header", pagesOf({identification(4, 3), {0x81, 'x', 'y'}}),
         "Error parsing Theora stream headers."},
        {"a size that no memory holds", pagesOf({identification(52802, 63274)}),
         "Error parsing Theora stream headers."},
        {"a size of nothing", pagesOf({identification(0, 3)}),
         "Error parsing Theora stream headers."},
    };
    for (const auto& item : cases) {
        const std::string message = refusal(item.file);
        EXPECT_FALSE(message.empty()) << item.name;
        if (item.message != nullptr) {
            EXPECT_EQ(message, item.message) << item.name;
        }
    }
}

TEST(Refusal, EveryCutOfAFileLoadsOrIsRefused) {
    support::ClipSpec spec;
    spec.frames = 5;
    spec.quality = 10;
    spec.sound = support::Sound::after;
    const Bytes clip = support::makeClip(spec);
    int loaded = 0;
    for (std::size_t size = 0; size < clip.size(); size += 37) {
        if (refusal(Bytes(clip.begin(), clip.begin() + static_cast<std::ptrdiff_t>(size)))
                .empty()) {
            ++loaded;
        }
    }
    EXPECT_GT(loaded, 3); // tails cut behind the headers
}

TEST(Damage, ACutTailKeepsTheFramesBeforeIt) {
    const Bytes clip = support::makeClip({});
    PlaybackSession session(
        Bytes(clip.begin(), clip.end() - static_cast<std::ptrdiff_t>(clip.size() / 3)));
    const int frames = session.clip().getNumFrames();
    EXPECT_GT(frames, 5);
    EXPECT_LT(frames, 30);
    const auto shown = session.seek(frames - 1);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->carried, frames - 1);
}

TEST(Damage, EverySeekInADamagedFileEnds) {
    support::ClipSpec spec;
    spec.frames = 60;
    spec.pages = {4, 255};
    spec.sound = support::Sound::before;
    const Bytes clip = support::makeClip(spec);
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        Bytes damaged = clip;
        for (int i = 0; i < 1 + round; ++i) {
            damaged[5000 + random() % (damaged.size() - 5000)] =
                static_cast<std::uint8_t>(random());
        }
        try {
            PlaybackSession session(damaged);
            for (const int n : {0, 59, 30, 7, 45, 1000}) {
                EXPECT_TRUE(session.seek(n)) << "round " << round << " frame " << n;
            }
        } catch (const theora::TheoraGenericException& error) {
            EXPECT_EQ(kMessages.count(error.getMessage()), 1U) << error.getMessage();
        }
    }
}

} // namespace
