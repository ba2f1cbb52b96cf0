// From what the probe says to the arguments of the converter.
#include <climits>
#include <sstream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "import/Plan.h"
#include "import/Source.h"
#include "import/ZoneMapping.h"

namespace {

using imports::Framing;
using imports::Plan;
using imports::Quality;
using imports::Ratio;
using imports::Source;
using platform::Point;
using platform::Rect;
using platform::Size;

std::string show(Size size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

std::string show(const Framing& framing) {
    return show(framing.scaled) + " " + show(framing.cropped) + "+" +
           std::to_string(framing.crop.x) + "+" + std::to_string(framing.crop.y) + " " +
           show(framing.frame) + "+" + std::to_string(framing.inFrame.x) + "+" +
           std::to_string(framing.inFrame.y);
}

/// A probe's answer: one picture, of which `lines` say more or something else.
Source sourceWith(const std::string& lines) {
    std::istringstream text(lines + "codec_name=\"h264\"\ncodec_type=\"video\"\nwidth=1920\n"
                                    "height=1080\navg_frame_rate=\"25/1\"\n");
    std::string all = "format.format_name=\"mov,mp4\"\n";
    for (std::string line; std::getline(text, line);) {
        const bool isWhole = line.starts_with("streams.") || line.starts_with("format.");
        all += (isWhole ? "" : "streams.stream.0.") + line + '\n';
    }
    return imports::readSource(all);
}

TEST(PlanTest, PicturesAreFittedCroppedAndGivenSides) {
    const std::tuple<Size, Quality, const char*> cases[] = {
        {{1920, 1080}, Quality::standard, "1280x720 1280x720+0+0 1280x720+0+0"},
        {{1920, 1080}, Quality::high, "1920x1080 1920x1072+0+4 1920x1072+0+0"},
        {{1920, 1080}, Quality::small, "640x360 640x352+0+4 640x352+0+0"},
        {{3840, 2160}, Quality::standard, "1280x720 1280x720+0+0 1280x720+0+0"},
        {{1080, 1920}, Quality::standard, "406x720 400x720+2+0 1280x720+440+0"},
        {{1440, 1080}, Quality::standard, "960x720 960x720+0+0 1280x720+160+0"},
        {{2560, 1080}, Quality::standard, "1280x540 1280x528+0+6 1280x720+0+96"},
        {{1080, 1920}, Quality::high, "608x1080 608x1072+0+4 1904x1072+648+0"},
        {{641, 359}, Quality::standard, "640x358 640x352+0+2 640x352+0+0"},
        {{160, 96}, Quality::standard, "160x96 160x96+0+0 176x96+8+0"},
        {{7, 5}, Quality::standard, "6x4 6x4+0+0 32x16+12+6"},
        {{65535, 1}, Quality::small, "640x2 640x2+0+0 640x352+0+174"},
    };
    for (const auto& [size, quality, expected] : cases) {
        EXPECT_EQ(show(imports::frameFor(size, quality)), expected) << show(size);
    }
}

TEST(PlanTest, RatesBecomeUsualOnes) {
    const std::tuple<Ratio, Ratio> cases[] = {
        {{2997, 100}, {30000, 1001}},
        {{24800, 1000}, {25, 1}},
        {{23976, 1000}, {24000, 1001}},
        {{15, 1}, {15, 1}},
        {{27, 1}, {27, 1}},
        {{5994, 100}, {60000, 1001}},
        {{240, 1}, {60, 1}},
        {{61, 1}, {60, 1}},
        {{55, 1}, {55, 1}},
        {{0, 0}, {25, 1}},
        {{1, 100000}, {25, 1}},
        {{90000, 1}, {60, 1}},
        {{2'000'000'000, 150'000'000}, {133333, 10000}},
    };
    for (const auto& [average, expected] : cases) {
        const Ratio rate = imports::constantRate(average);
        EXPECT_EQ(std::tie(rate.top, rate.bottom), std::tie(expected.top, expected.bottom))
            << average.value();
    }
}

TEST(PlanTest, EverySourceGetsTheFiltersThatItNeeds) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"color_space=\"bt709\"\n", "m=bt470bg:r=limited,format=yuv420p", "tonemap"},
        {"color_range=\"pc\"\n", "out_range=tv", "zscale"},
        {"color_transfer=\"smpte2084\"\n", "tin=smpte2084", "scale=1280:720"},
        {"color_transfer=\"arib-std-b67\"\ncolor_primaries=\"odd:,\"\n", "pin=bt2020", "odd"},
        {"field_order=\"tt\"\n", "bwdif=mode=send_frame:deint=interlaced,fps", "setfield"},
        {"codec_name=\"ffv1\"\nfield_order=\"bb\"\n", "setfield=bff,bwdif", "tff"},
        {"field_order=\"progressive\"\n", "fps=fps=25/1:start_time=0,", "bwdif"},
        {"side_data_list.side_data.2.rotation=90\n",
         "crop=400:720:2:0,pad=1280:720:440:0:black,setsar=1", "bwdif=x"},
        {"side_data_list.side_data.0.rotation=-90\n", "scale=406:720", "1280:720:fl"},
        {"side_data_list.side_data.1.rotation=180\n", "scale=1280:720", "pad"},
        {"side_data_list.side_data.0.rotation=45\n", "scale=1280:720", "pad"},
        {"start_time=1.521\nformat.start_time=1.5\n", "setpts=PTS-21000/1e6/TB,bwdif", "crop"},
        {"start_time=2.0\nformat.start_time=1.5\n", "start_time=0,", "setpts"},
        {"start_time=0\nformat.start_time=N/A\n", "start_time=0,", "setpts"},
        {"sample_aspect_ratio=\"4:3\"\nwidth=1440\n", "scale=1280:720", "pad"},
        {"sample_aspect_ratio=\"1000:1\"\n", "scale=1280:720", "pad"},
    };
    for (const auto& [lines, wanted, unwanted] : cases) {
        const Source source = sourceWith(lines);
        ASSERT_TRUE(source.video);
        const std::string filters = imports::planFor(source, {}).videoFilters;
        EXPECT_NE(filters.find(wanted), filters.npos) << lines << filters;
        EXPECT_EQ(filters.find(unwanted), filters.npos) << lines << filters;
    }
}

TEST(PlanTest, OnlyUsableStreamsAreTaken) {
    const auto streams = [](const std::string& more) {
        return sourceWith("disposition.attached_pic=1\n" + more);
    };
    EXPECT_FALSE(streams("").video) << "a cover";
    const std::string second = "streams.stream.1.index=1\nstreams.stream.1.codec_type=\"video\"\n"
                               "streams.stream.1.codec_name=\"hevc\"\nstreams.stream.1.width=64\n"
                               "streams.stream.1.height=48\n";
    ASSERT_TRUE(streams(second).video);
    EXPECT_EQ(streams(second).video->index, 1);
    EXPECT_EQ(sourceWith("nb_frames=1\ndisposition.default=1\n" + second).video->index, 1);
    EXPECT_EQ(sourceWith(second + "streams.stream.1.disposition.default=1\n").video->index, 1);
    EXPECT_EQ(sourceWith("nb_frames=1\n").video->index, 0);
    const std::string sound = "streams.stream.2.index=2\nstreams.stream.2.codec_type=\"audio\"\n"
                              "streams.stream.2.codec_name=\"aac\"\nstreams.stream.2.channels=";
    const Source spatial = streams(second + sound + "4\n");
    const Plan plan = imports::planFor(spatial, {});
    EXPECT_EQ(plan.soundIndex, 2);
    EXPECT_TRUE(plan.soundFilters.starts_with("pan=stereo|c0=c0|c1=c1,")) << plan.soundFilters;
    EXPECT_FALSE(imports::planFor(spatial, {Quality::small, false}).soundIndex);
    EXPECT_FALSE(streams(second + sound + "0\n").sound);
}

TEST(PlanTest, AnyTextIsReadHarmlessly) {
    const std::string texts[] = {"",
                                 "=",
                                 "\n\n==\n",
                                 "streams.stream.0.width",
                                 std::string(9, '\0'),
                                 "streams.stream.0.codec_type=\"video\"\n"
                                 "streams.stream.0.codec_name=\"x\"\n"
                                 "streams.stream.0.width=99999999999999999999\n"
                                 "streams.stream.0.height=-5\n",
                                 "format.duration=1e999\nformat.duration=nan\n"};
    for (const std::string& text : texts) {
        const Source source = imports::readSource(text);
        EXPECT_FALSE(source.video) << text;
        EXPECT_LT(source.seconds, 0) << text;
    }
    const Source odd = sourceWith("duration=\"-inf\"\nside_data_list.side_data.0.rotation=1e300\n"
                                  "sample_aspect_ratio=\"0:0\"\n");
    EXPECT_EQ(imports::uprightSize(*odd.video), (Size{1920, 1080}));
}

TEST(PlanTest, PacketsGiveTheRateThatHeadersLack) {
    imports::PacketTimes times;
    for (const char* line : {"0.400000,0.2,K_", "0.000000,N/A,K_", "0.200000,0.2,__", "N/A,N/A,__",
                             "-5.0,0.2,KD", "nonsense", ""}) {
        times.take(line);
    }
    EXPECT_EQ(times.count(), 3);
    EXPECT_NEAR(times.seconds(), 0.6, 1e-9);
    EXPECT_NEAR(times.rate({}).value(), 5.0, 1e-9);
    EXPECT_EQ(times.rate({4995, 1000}).top, 4995) << "as precise as the times are";
    EXPECT_NEAR(times.rate({24, 5}).value(), 5.0, 1e-9);
    EXPECT_FALSE(imports::PacketTimes().rate({}).isKnown());
}

TEST(PlanTest, PointsMoveWithThePicture) {
    const Framing wide = imports::frameFor({1920, 1080}, Quality::high); // cropped above and below
    const Framing upright = imports::frameFor({1080, 1920}, Quality::standard);
    const std::tuple<const Framing&, Rect, Point, Point> cases[] = {
        {wide, Rect::at(0, 0, 1920, 1080), {100, 100}, {100, 96}},
        {wide, Rect::at(0, 0, 1920, 1080), {0, 2}, {0, 0}},
        {wide, Rect::at(0, 0, 1920, 1080), {1920, 1080}, {1920, 1072}},
        {wide, Rect::at(0, 8, 1920, 1080), {100, 108}, {100, 96}},
        {upright, Rect::at(0, 0, 1080, 1920), {540, 960}, {641, 360}},
        {upright, Rect::at(0, 0, 1080, 1920), {0, 0}, {438, 0}},
        {upright, {}, {5, 5}, {1280, 720}},
        {wide, Rect::at(8, 8, 1920, 1080), {INT_MIN, INT_MAX}, {0, 1072}},
    };
    for (const auto& [framing, old, from, to] : cases) {
        EXPECT_EQ(imports::mapPoint(framing, old, from), to) << from.x << "," << from.y;
    }
}

} // namespace
