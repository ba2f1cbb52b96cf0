#include <cstddef>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SilentSound.h"
#include "platform/Sound.h"
#include "tests/support/FixedClock.h"

namespace platform {
namespace {

constexpr SoundFormat kFormat{1000, 2}; // a sample a millisecond

class SilentSoundTest : public testing::Test {
protected:
    std::size_t write(std::size_t count) {
        const std::vector<float> samples(count * 2);
        return m_output->write(samples.data(), count);
    }

    support::FixedClock m_clock;
    std::unique_ptr<SoundOutput> m_output = openSilentSound(kFormat, m_clock);
};

TEST_F(SilentSoundTest, IsHeardByTheClockAndStandsWithNothingToPlay) {
    m_clock.passed += 500;
    EXPECT_EQ(m_output->position(), 0) << "nothing was written";
    EXPECT_EQ(write(1000), 200U) << "room for 200 ms";
    m_clock.passed += 50;
    EXPECT_EQ(m_output->position(), 50);
    EXPECT_EQ(m_output->space(), 50U);
    m_clock.passed += 400;
    EXPECT_EQ(m_output->position(), 200) << "no further than what was written";
    EXPECT_EQ(write(30), 30U);
    EXPECT_EQ(m_output->position(), 200) << "it goes on from now, not from where time has got to";
    m_clock.passed += 20;
    EXPECT_EQ(m_output->position(), 220);
}

TEST_F(SilentSoundTest, PausesAndDropsWhatWasNotHeard) {
    (void)write(200);
    m_clock.passed += 60;
    m_output->pause(true);
    m_clock.passed += 1000;
    EXPECT_EQ(m_output->position(), 60);
    m_output->pause(false);
    m_clock.passed += 10;
    m_output->flush();
    m_clock.passed += 10;
    EXPECT_EQ(m_output->position(), 70);
    EXPECT_EQ(write(1000), 200U);
    m_clock.passed += 5;
    EXPECT_EQ(m_output->position(), 75);
}

TEST(SoundFormat, RefusesWhatNoDevicePlays) {
    support::FixedClock clock;
    SilentSound sound(clock);
    EXPECT_NE(sound.open({48000, 2}), nullptr);
    for (const SoundFormat format : {SoundFormat{0, 2},
                                     {-1, 2},
                                     {7999, 1},
                                     {192001, 2},
                                     {48000, 0},
                                     {48000, 9},
                                     {2'000'000'000, 255}}) {
        EXPECT_EQ(sound.open(format), nullptr) << format.rate << " " << format.channels;
        EXPECT_EQ(nativeSound().open(format), nullptr);
    }
}

} // namespace
} // namespace platform
