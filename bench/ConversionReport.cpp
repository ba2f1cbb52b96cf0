#include "bench/ConversionReport.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "bench/ReportTable.h"
#include "bench/Samples.h"

#ifdef QUORVEL_HAVE_LIBYUV
#include <libyuv.h>
#endif

namespace bench {
namespace {

constexpr int kRounds = 31;

struct NoiseFrame {
    std::vector<std::uint8_t> y, u, v, rgb;
    theora::TheoraPicture picture; ///< of y, u and v

    explicit NoiseFrame(FrameSize size) {
        const auto pixels =
            static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
        y.resize(pixels);
        u.resize(pixels / 4);
        v.resize(pixels / 4);
        rgb.resize(pixels * 3);
        std::mt19937 random(1);
        for (auto* plane : {&y, &u, &v}) {
            for (auto& sample : *plane) {
                sample = static_cast<std::uint8_t>(random());
            }
        }
        const int w = size.width;
        const int h = size.height;
        picture.planes = {{{y.data(), w, w, h},
                           {u.data(), w / 2, w / 2, h / 2},
                           {v.data(), w / 2, w / 2, h / 2}}};
    }
};

template <typename Convert>
double medianTime(Convert&& convert) {
    Samples time;
    for (int i = 0; i < kRounds; ++i) {
        const auto start = Clock::now();
        convert();
        time.add(millisecondsSince(start));
    }
    return time.median();
}

} // namespace

double conversionTime(FrameSize size, theora::ColorPath path) {
    NoiseFrame frame(size);
    return medianTime([&] {
        theora::convertPicture(frame.picture, theora::TheoraOutputMode::TH_RGB, frame.rgb.data(),
                               size.width, size.height, path);
    });
}

void reportConversion(FrameSize size) {
    const double fast = conversionTime(size, theora::ColorPath::fastest);
    const double portable = conversionTime(size, theora::ColorPath::portable);
#ifdef QUORVEL_HAVE_LIBYUV
    NoiseFrame frame(size);
    const int w = size.width;
    const double peer = medianTime([&] {
        libyuv::I420ToRAW(frame.y.data(), w, frame.u.data(), w / 2, frame.v.data(), w / 2,
                          frame.rgb.data(), w * 3, w, size.height);
    });
    row("conversion to RGB",
        number(fast, "ms, ") + number(fast / peer, "x") + "; without AVX2 " +
            number(portable, "ms, ") + number(portable / peer, "x"),
        number(peer, "ms (libyuv)"), "<= 2.1 x; without AVX2 <= 4.5 x");
#else
    row("conversion to RGB", number(fast, "ms; without AVX2 ") + number(portable, "ms"),
        "no libyuv here", "<= 2.1 x libyuv");
#endif
}

} // namespace bench
